// The Bible's own menu and property page: packing a folder Bible into one file and
// writing a packed one out as a folder again, offered where the system menu is on.
#include <sys/stat.h>

#include <string>

#include "bible/VXBible.h"
#include "runtime/Factories.h"
#include "runtime/UTF8Write.h"
#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IString> Text(const std::wstring& text) { return SmartPtr<IString>::Adopt(ISCreate(text.c_str())); }

// A book's name that stands for a file inside the folder, and nowhere else.
bool IsFileName(const std::wstring& name)
{
    return !name.empty() && name != L"." && name != L".." && name.find(L'/') == std::wstring::npos;
}

} // namespace

int32_t CVXBible::GetVerbs(int, IUnknown*, IUIVerbCollection** verbs)
{
    if (!verbs)
        return E_INVALIDARG;
    auto collection = SmartPtr<IUIVerbCollection>::Adopt(UIObject::CreateUIVerbCollection());
    auto registry = SmartPtr<IRegistryEx>::Adopt(BASEObject::CreateRegistryEx());
    // The registry fills a buffer of 712 bytes; its last character stays 0.
    wchar_t buffer[712 / sizeof(wchar_t)] = {};
    if (registry)
        registry->get_String(L"UI", L"SystemMenu", buffer);
    buffer[std::size(buffer) - 1] = 0;
    CREFString value(buffer);
    if (!collection || value.IsEmpty() || _IS2Integer(value, 10) == 0)
        return E_FAIL;
    collection->Add(-1, Text(L"Edit"), 0, 0, BIBLEVERB_EDIT, 0);
    collection->Add(-1, Text(L"Compress"), 0, 0, BIBLEVERB_COMPRESS, 0);
    collection->Add(-1, Text(L"UnCompress"), 0, 0, BIBLEVERB_UNCOMPRESS, 0);
    // A packed Bible can't be packed, and a folder Bible has nothing to unpack.
    for (auto [code, disabled] : {std::pair{BIBLEVERB_COMPRESS, m_Compressed != 0},
                                  std::pair{BIBLEVERB_UNCOMPRESS, m_Compressed == 0}}) {
        SmartPtr<IUnknown> verb;
        collection->get_Item(collection->get_Index(code), verb.Receive());
        if (auto state = verb.As<IUIVerb>())
            state->Control(4, disabled ? 1 : 0);
    }
    *verbs = collection.Detach();
    return S_OK;
}

int32_t CVXBible::DoAction(int code, IUnknown*)
{
    switch (code) {
    case BIBLEVERB_COMPRESS:
        // A failed save goes unnoticed here, as the file on disk tells.
        Save();
        return S_OK;
    case BIBLEVERB_UNCOMPRESS:
        UnCompress();
        return S_OK;
    case BIBLEVERB_EDIT:
        return ShowProperties();
    default:
        return code;
    }
}

int32_t CVXBible::ShowProperties()
{
    auto pages = Make<IUIPropertyPageCollection>(REFLiteral(L"UIPropertyPageCollection"));
    if (!pages)
        return E_FAIL;
    pages->put_Object(Primary(), 0x60);
    // The frame finds its page through GetPages.
    if (auto utils = Make<IUIUtils>(REFLiteral(L"UIUtils"))) {
        SmartPtr<IUnknown> frame;
        utils->ShowPropertyFrame(nullptr, Primary(), 3, pages, frame.Receive(), 4, 0);
    }
    return S_OK;
}

void CVXBible::UnCompress()
{
    int count = 0;
    get_Count(&count);
    auto ini = Make<IINIFile>(REFLiteral(L"INIFile"));
    if (!ini)
        return;
    ini->put_Section(Text(L"Bible"));
    auto entries = ini.As<IParameters>();
    if (!entries)
        return;
    entries->AddNOLOCK(Text(L"abbreviation"), m_Abbreviation, nullptr, 0);

    // The folder of the file's name without its extension; with no ".", an empty name.
    CREFString name(m_Filename.get());
    int32_t dot = -1;
    for (int32_t i = 0; i < name.m_Length; ++i)
        if (name.m_Buffer[i] == L'.')
            dot = i;
    std::wstring folder = dot < 0 ? std::wstring() : std::wstring(name.m_Buffer, size_t(dot));
    std::string path;
    UTF8Append(path, folder.data(), int(folder.size()));
    // Open to everyone, as the installation's other folders are; the process keeps its own mask.
    mode_t before = umask(0);
    mkdir(path.c_str(), 0777);
    umask(before);

    for (int i = 1; i <= count; ++i) {
        SmartPtr<IUnknown> item;
        get_Item(i - 1, item.Receive());
        auto book = item.As<IVXBook>();
        auto archive = item.As<IFileArchive>();
        SmartPtr<IString> header;
        if (!book || !archive || book->Header(header.Receive(), -1, -1, 0, nullptr) < 0)
            continue;
        CREFString view(header.get());
        std::wstring bookName = view.IsEmpty() ? std::wstring() : std::wstring(view.m_Buffer, size_t(view.m_Length));
        // A name that would lead out of the folder writes nothing.
        if (!IsFileName(bookName))
            continue;
        archive->put_Filename(Text(folder + L"/" + bookName + L".bbl"));
        archive->Save();
        entries->AddNOLOCK(Text(std::to_wstring(i)), header, nullptr, 0);
    }
    if (auto file = ini.As<IFileArchive>()) {
        file->put_Filename(Text(folder + L"/bible.ini"));
        file->Save();
    }
}

int32_t CVXBible::GetPages(int, INamedCollection** pages, IUnknown**)
{
    auto collection = SmartPtr<ISuperCollection>::Adopt(CREFString::CreateCollection());
    if (!collection || !pages)
        return S_OK;
    auto name = SmartPtr<IString>::Adopt(ISCreate(ObjectName()));
    auto page = Text(L"UIPropInterrogatePropPage");
    collection->Add(name, page, name, 0);
    *pages = collection.As<INamedCollection>().Detach();
    return S_OK;
}
