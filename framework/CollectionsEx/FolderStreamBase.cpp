#include "framework/CollectionsEx/FolderStreamBase.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "framework/CollectionsEx/FolderStreamFolder.h"
#include "framework/CollectionsEx/FolderZipRead.h"
#include "framework/CollectionsEx/RealText.h"
#include "framework/CollectionsEx/WideUTF8.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

namespace {

tagREFString NameOf(IString* name)
{
    tagREFString view{0, nullptr};
    if (name && name->GetBuffer(&view.m_Buffer, &view.m_Length) < 0)
        view = tagREFString{0, nullptr};
    return view;
}

std::string UTF8Of(IUnknown* text)
{
    CREFString view(text);
    if (view.m_Length < 1 || !view.m_Buffer)
        return {};
    return WideToUTF8(view.m_Buffer, size_t(view.m_Length));
}

std::wstring TextOf(const FolderItem& item) { return UTF8ToWide(item.m_Bytes.data(), item.m_Bytes.size()); }

IString* StringOf(const std::wstring& text) { return ISCreate(CREFString(text.data(), int32_t(text.size()))); }

std::string Digits(int value)
{
    char digits[16];
    auto end = std::to_chars(digits, digits + sizeof(digits), value).ptr;
    return std::string(digits, end);
}

std::string Digits(double value) { return RealToText(value); }

// A stored number read back; false if the text isn't one whole number of its kind.
bool ParseNumber(const FolderItem& item, int* value)
{
    const char* begin = reinterpret_cast<const char*>(item.m_Bytes.data());
    const char* end = begin + item.m_Bytes.size();
    auto parsed = std::from_chars(begin, end, *value);
    return begin != end && parsed.ec == std::errc() && parsed.ptr == end;
}

bool ParseNumber(const FolderItem& item, double* value)
{
    return RealFromText(reinterpret_cast<const char*>(item.m_Bytes.data()), item.m_Bytes.size(), value);
}

} // namespace

FolderItem* CFolderStreamBase::Item(IString* name)
{
    int index = m_Node->Find(NameOf(name));
    return index < 0 ? nullptr : &m_Node->m_Items[size_t(index)];
}

// The block, found again by name if the folder changed under it.
FolderItem* CFolderStreamBase::Block()
{
    if (!m_HasBlock)
        return nullptr;
    auto& items = m_Node->m_Items;
    if (m_BlockIndex >= items.size() || items[m_BlockIndex].m_Name != m_Block) {
        int index = m_Node->Find(CREFString(m_Block.data(), int32_t(m_Block.size())));
        if (index < 0)
            return nullptr;
        m_BlockIndex = size_t(index);
    }
    FolderItem& block = items[m_BlockIndex];
    return block.IsFolder() ? nullptr : &block;
}

int32_t CFolderStreamBase::HandOutFolder(std::shared_ptr<FolderNode> node, IDataStream** out)
{
    if (!out)
        return S_OK;
    *out = nullptr;
    return CFolderStreamFolder::Create(std::move(node), out);
}

int32_t CFolderStreamBase::TakeArchive(const unsigned char* bytes, size_t size)
{
    FolderNode loaded;
    int32_t result = FolderTreeFromZip(bytes, size, &loaded);
    if (result < 0)
        return result;
    m_Node->m_Items = std::move(loaded.m_Items);
    m_HasBlock = false;
    return S_OK;
}

int32_t CFolderStreamBase::SetBuffer(void* data, int bytes, int /*mode*/)
{
    if (bytes < 0 || (bytes > 0 && !data))
        return E_INVALIDARG;
    if (!data) {
        m_Node->m_Items.clear();
        m_HasBlock = false;
        return S_OK;
    }
    return TakeArchive(static_cast<const unsigned char*>(data), size_t(bytes));
}

int32_t CFolderStreamBase::Skip(int, int, int) { return E_NOTIMPL; }

int32_t CFolderStreamBase::GetBuffer(void** data, unsigned long* size)
{
    if (!data || !size)
        return E_POINTER;
    FolderItem* block = Block();
    if (!block)
        return E_FAIL;
    // An empty block still gives a pointer the caller may read nothing from.
    static unsigned char nothing = 0;
    *data = block->m_Bytes.empty() ? &nothing : block->m_Bytes.data();
    *size = static_cast<unsigned long>(block->m_Bytes.size());
    return S_OK;
}

int32_t CFolderStreamBase::Write(const void* data, int size, int /*reserved*/)
{
    if (size < 0)
        return E_INVALIDARG;
    if (size > 0 && !data)
        return E_POINTER;
    FolderItem* block = Block();
    if (!block)
        return E_FAIL;
    auto bytes = static_cast<const unsigned char*>(data);
    block->m_Bytes.insert(block->m_Bytes.end(), bytes, bytes + size);
    return S_OK;
}

int32_t CFolderStreamBase::CreateFolder(IString* name, int /*mode*/, IDataStream** out)
{
    tagREFString key = NameOf(name);
    if (!FolderNameValid(key))
        return E_INVALIDARG;
    return HandOutFolder(m_Node->PutFolder(key), out);
}

int32_t CFolderStreamBase::CreateBlock(IString* name)
{
    tagREFString key = NameOf(name);
    if (!FolderNameValid(key))
        return E_INVALIDARG;
    m_Node->Put(key, FolderItemKind::Data);
    m_Block.assign(key.m_Buffer, size_t(key.m_Length));
    m_HasBlock = true;
    return S_OK;
}

int32_t CFolderStreamBase::WriteData(IString* name, const void* data, int size, int /*reserved*/)
{
    tagREFString key = NameOf(name);
    if (!FolderNameValid(key) || size < 0)
        return E_INVALIDARG;
    if (size > 0 && !data)
        return E_POINTER;
    auto bytes = static_cast<const unsigned char*>(data);
    m_Node->Put(key, FolderItemKind::Data).m_Bytes.assign(bytes, bytes + size);
    return S_OK;
}

int32_t CFolderStreamBase::WriteString(IString* name, IUnknown* value)
{
    tagREFString key = NameOf(name);
    if (!FolderNameValid(key))
        return E_INVALIDARG;
    if (!value)
        return E_POINTER;
    FolderItemKind kind = FolderItemKind::Text;
    std::string text;
    if (auto variant = QueryAs<IVariant>(value)) {
        if (variant->get_Type() == VARIANT_INTEGER) {
            kind = FolderItemKind::Integer;
            text = Digits(variant->get_Integer());
        } else if (variant->get_Type() == VARIANT_DOUBLE) {
            kind = FolderItemKind::Double;
            text = Digits(variant->get_Double());
        } else if (variant->IsString()) {
            SmartPtr<IString> string;
            variant->get_String(string.Receive());
            text = UTF8Of(string);
        } else if (variant->IsObject()) {
            // An object is written by WriteObject, not as a value.
            return E_INVALIDARG;
        }
    } else if (auto string = QueryAs<IString>(value)) {
        text = UTF8Of(string);
    } else {
        return E_INVALIDARG;
    }
    m_Node->Put(key, kind).m_Bytes.assign(text.begin(), text.end());
    return S_OK;
}

int32_t CFolderStreamBase::WriteObject(IString* name, IUnknown* object, int flags)
{
    tagREFString key = NameOf(name);
    if (!FolderNameValid(key))
        return E_INVALIDARG;
    auto persist = QueryAs<IDataPersist>(object);
    if (!persist)
        return object ? E_NOINTERFACE : E_POINTER;
    std::shared_ptr<FolderNode> node = m_Node->PutFolder(key);
    // The folder remembers which component to make when it is read into nothing.
    tagREFString component{0, nullptr};
    if (auto info = QueryAs<IObjectInfo>(object); info && info->GetName(0, &component) >= 0 && component.m_Length > 0)
        node->m_Component.assign(component.m_Buffer, size_t(component.m_Length));
    SmartPtr<IDataStream> folder;
    int32_t result = HandOutFolder(node, folder.Receive());
    if (result < 0)
        return result;
    result = persist->Save(folder, flags);
    return result < 0 ? result : S_OK;
}

int32_t CFolderStreamBase::OpenBlock(IString* name)
{
    FolderItem* item = Item(name);
    if (!item || item->IsFolder())
        return E_FAIL;
    m_Block = item->m_Name;
    m_BlockIndex = size_t(item - m_Node->m_Items.data());
    m_HasBlock = true;
    return S_OK;
}

int32_t CFolderStreamBase::ReadData(IString* name, void* data, int size, int /*reserved*/)
{
    if (size < 0)
        return E_INVALIDARG;
    if (size > 0 && !data)
        return E_POINTER;
    FolderItem* item = Item(name);
    if (!item || item->IsFolder())
        return E_FAIL;
    // A shorter item fills the front and leaves the rest as it was.
    size_t count = std::min(size_t(size), item->m_Bytes.size());
    if (count > 0)
        std::memcpy(data, item->m_Bytes.data(), count);
    return S_OK;
}

int32_t CFolderStreamBase::ReadString(IString* name, IUnknown* value)
{
    if (!value)
        return E_POINTER;
    FolderItem* item = Item(name);
    if (!item || item->IsFolder())
        return E_FAIL;
    if (auto variant = QueryAs<IVariant>(value)) {
        int integer = 0;
        double real = 0.0;
        if (item->m_Kind == FolderItemKind::Integer && ParseNumber(*item, &integer))
            return variant->put_Integer(integer);
        if (item->m_Kind == FolderItemKind::Double && ParseNumber(*item, &real))
            return variant->put_Double(real);
        auto string = SmartPtr<IString>::Adopt(StringOf(TextOf(*item)));
        if (!string)
            return E_FAIL;
        return variant->put_String(string);
    }
    if (auto string = QueryAs<ICreatableString>(value)) {
        std::wstring text = TextOf(*item);
        return string->Clone(CREFString(text.data(), int32_t(text.size())));
    }
    return E_INVALIDARG;
}

int32_t CFolderStreamBase::OpenFolder(IUnknown* key, int /*mode*/, IDataStream** out)
{
    if (!out)
        return E_POINTER;
    int index = -1;
    auto variant = QueryAs<IVariant>(key);
    if (variant && variant->get_Type() != VARIANT_NONE) {
        // Positions count the sub-folders only, so that a walk by position meets
        // every folder even where plain items lie between them.
        index = m_Node->FindFolder(variant->get_Integer());
    } else {
        SmartPtr<IString> name;
        if (variant && variant->IsString())
            variant->get_String(name.Receive());
        index = m_Node->Find(CREFString(name ? name.get() : key));
    }
    if (index < 0 || !m_Node->m_Items[size_t(index)].IsFolder())
        return E_FAIL;
    return HandOutFolder(m_Node->m_Items[size_t(index)].m_Folder, out);
}

int32_t CFolderStreamBase::ReadObject(IString* name, IUnknown** object, int flags)
{
    if (!object)
        return E_POINTER;
    FolderItem* item = Item(name);
    if (!item || !item->IsFolder())
        return E_FAIL;
    std::shared_ptr<FolderNode> node = item->m_Folder;
    SmartPtr<IDataStream> folder;
    int32_t result = HandOutFolder(node, folder.Receive());
    if (result < 0)
        return result;
    if (*object) {
        auto persist = QueryAs<IDataPersist>(*object);
        return persist ? persist->Load(folder, flags) : E_NOINTERFACE;
    }
    if (node->m_Component.empty())
        return E_FAIL;
    IID iid = IID_IDataPersist;
    auto persist = SmartPtr<IDataPersist>::Adopt(static_cast<IDataPersist*>(static_cast<void*>(
        CreateObject(CREFString(node->m_Component.data(), int32_t(node->m_Component.size())), &iid))));
    if (!persist)
        return E_FAIL;
    result = persist->Load(folder, flags);
    if (result < 0)
        return result;
    return persist->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(object));
}

int32_t CFolderStreamBase::get_Count(int* count)
{
    if (!count)
        return E_POINTER;
    *count = int(m_Node->m_Items.size());
    return S_OK;
}

int32_t CFolderStreamBase::get_Item(int index, IUnknown** item)
{
    if (!item)
        return E_POINTER;
    *item = nullptr;
    if (index < 0 || size_t(index) >= m_Node->m_Items.size())
        return E_INVALIDARG;
    const FolderItem& entry = m_Node->m_Items[size_t(index)];
    if (entry.IsFolder()) {
        IDataStream* folder = nullptr;
        int32_t result = HandOutFolder(entry.m_Folder, &folder);
        *item = folder;
        return result;
    }
    *item = StringOf(TextOf(entry));
    return *item ? S_OK : E_FAIL;
}

int32_t CFolderStreamBase::get_Index(IUnknown* key, int* index)
{
    if (!index)
        return E_POINTER;
    *index = -1;
    auto variant = QueryAs<IVariant>(key);
    if (variant && variant->get_Type() != VARIANT_NONE) {
        int position = variant->get_Integer();
        if (position < 0 || size_t(position) >= m_Node->m_Items.size())
            return E_INVALIDARG;
        *index = position;
        return S_OK;
    }
    SmartPtr<IString> name;
    if (variant && variant->IsString())
        variant->get_String(name.Receive());
    *index = m_Node->Find(CREFString(name ? name.get() : key));
    return *index < 0 ? E_FAIL : S_OK;
}

int32_t CFolderStreamBase::get_ItemName(int index, IString** name)
{
    if (!name)
        return E_POINTER;
    *name = nullptr;
    if (index < 0 || size_t(index) >= m_Node->m_Items.size())
        return E_INVALIDARG;
    *name = StringOf(m_Node->m_Items[size_t(index)].m_Name);
    return *name ? S_OK : E_FAIL;
}

int32_t CFolderStreamBase::Rename(int index, IString* name)
{
    tagREFString key = NameOf(name);
    if (index < 0 || size_t(index) >= m_Node->m_Items.size() || !FolderNameValid(key))
        return E_INVALIDARG;
    // Two items of one name could not both be found, nor both be saved.
    int other = m_Node->Find(key);
    if (other >= 0 && other != index)
        return E_INVALIDARG;
    m_Node->m_Items[size_t(index)].m_Name.assign(key.m_Buffer, size_t(key.m_Length));
    return S_OK;
}
