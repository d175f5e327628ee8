#include "songs/VXSongConvert.h"

#include <string>

#include "persistence/FileBuffer.h"
#include "persistence/TextLine.h"
#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"
#include "songs/LongTextLine.h"

int32_t CreateVXSongConvert(void* outer, IID* iid, void** object)
{
    return CObject<CVXSongConvert>::_CreateInstance(outer, iid, object);
}

namespace {

SmartPtr<IString> Literal(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

SmartPtr<IVariant> IntegerVariant(int value)
{
    auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    if (variant)
        variant->put_Integer(value);
    return variant;
}

template <class I> SmartPtr<I> NewComponent(const wchar_t* name)
{
    IID iid = I::Iid();
    return SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(CREFString(name), &iid))));
}

std::wstring TextOf(const tagREFString& view)
{
    return view.m_Length > 0 && view.m_Buffer ? std::wstring(view.m_Buffer, size_t(view.m_Length)) : std::wstring();
}

// The file of a book: the folder, "/", the name, ".bbl". A separator inside a name
// would put the file outside the folder; it becomes "_".
SmartPtr<IString> BookFileName(const std::wstring& folder, const std::wstring& book)
{
    std::wstring file = book;
    for (wchar_t& c : file)
        if (c == L'/' || c == L'\\')
            c = L'_';
    std::wstring path = folder + L"/" + file + L".bbl";
    return SmartPtr<IString>::Adopt(ISCreate(CREFString(path.data(), int32_t(path.size()))));
}

void SaveBook(const std::wstring& folder, const std::wstring& book, ICreatableSimpleCollection* lines)
{
    auto archive = QueryAs<IFileArchive>(lines);
    if (!archive)
        return;
    archive->put_Filename(BookFileName(folder, book));
    archive->Save();
}

// The list of books goes out as a song file does: a mark, then 16 bits a character.
void SaveList(const std::wstring& folder, std::wstring& ini)
{
    std::wstring path = folder + L"/bible.ini";
    FileArchiveSave(CREFString(path.data(), int32_t(path.size())), reinterpret_cast<unsigned char*>(ini.data()),
                    (unsigned long)(ini.size() * sizeof(wchar_t)), 1, 0);
}

} // namespace

int32_t CVXSongConvert::FinalConstruct()
{
    struct Item {
        const wchar_t* m_Name;
        int m_Flags;
    };
    // The order is the contract: Execute reads the first two by position.
    static const Item kItems[] = {
        {L"InFileItem", 0x16},
        {L"SavePath", 0x26},
        {L"ConversionType", 0},
        {L"OutFileItem", 0x4000027},
    };
    for (const Item& item : kItems) {
        SmartPtr<IUnknown> value;
        if (item.m_Flags != 0x26)
            value = SmartPtr<IUnknown>(IntegerVariant(0).get());
        CollectionLock();
        int32_t result = AddNOLOCK(Literal(item.m_Name), value, nullptr, item.m_Flags);
        CollectionUnlock();
        if (result < 0)
            return result;
    }
    return S_OK;
}

int32_t CVXSongConvert::GetPages(int, INamedCollection** pages, IUnknown**)
{
    if (!pages)
        return E_POINTER;
    auto collection = SmartPtr<ISuperCollection>::Adopt(CREFString::CreateCollection());
    if (!collection)
        return E_FAIL;
    collection->Add(Literal(L""), Literal(L"UIPropPages.UIParametersPropPage"), nullptr, 0);
    *pages = SmartPtr<INamedCollection>(collection.get()).Detach();
    return S_OK;
}

int32_t CVXSongConvert::Execute()
{
    auto itemText = [this](int index) {
        SmartPtr<IVariant> value;
        SmartPtr<IString> text;
        if (get_ItemVariant(index, value.Receive()) >= 0 && value)
            value->get_String(text.Receive());
        return TextOf(CREFString(text.get()));
    };
    std::wstring savePath = itemText(kSavePath);
    std::wstring inFile = itemText(kInFileItem);
    // Without a target the books would land in the root of the file system.
    if (savePath.empty())
        return E_FAIL;

    auto input = NewComponent<IStringCollection>(L"StringCollection");
    if (!input)
        return E_FAIL;
    input->put_Separator(13);
    if (auto archive = input.As<IFileArchive>()) {
        archive->put_Filename(SmartPtr<IString>::Adopt(ISCreate(CREFString(inFile.data(), int32_t(inFile.size())))));
        archive->Load();
    }
    int count = 0;
    input->get_Count(&count);

    std::wstring ini = L"[Bible]\r\nabbreviation = VDCC\r\n";
    auto book = NewComponent<ICreatableSimpleCollection>(L"StringCollection");
    int expectTitle = 1;
    int bookCount = 0;
    std::wstring bookName;
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> line;
        input->get_Item(i, line.Receive());
        auto text = line.As<IString>();
        CREFString trimmed(text.get());
        TextTrimLeft(trimmed);
        TextTrimRight(trimmed);
        LongTextLine kind = LongTextClassify(trimmed);
        if (kind == LongTextLine::Blank || kind == LongTextLine::Verse) {
            if (kind == LongTextLine::Verse)
                ++expectTitle;
            if (book)
                book->Add(line);
        } else if (kind == LongTextLine::Chapter) {
            // The heading that the Bible side looks for: the book's name and the number.
            std::wstring heading = bookName + L" " + TextOf(trimmed);
            if (book)
                book->Add(SmartPtr<IString>::Adopt(ISCreate(CREFString(heading.data(), int32_t(heading.size())))));
            expectTitle = 0;
        } else if (expectTitle != 0) {
            if (bookCount > 0)
                SaveBook(savePath, bookName, book);
            ++bookCount;
            bookName = TextOf(trimmed);
            ini += std::to_wstring(bookCount) + L" = " + bookName + L"\r\n";
            book = NewComponent<ICreatableSimpleCollection>(L"StringCollection");
        }
    }
    // Also with no title at all: what was gathered goes to a file without a name.
    SaveBook(savePath, bookName, book);
    SaveList(savePath, ini);
    return S_OK;
}
