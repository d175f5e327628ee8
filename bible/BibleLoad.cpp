// How a translation comes to exist: from a folder of book files, a packed file or an XML file.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <cwctype>
#include <string>

#include "bible/VXBible.h"
#include "persistence/FileNameUTF8.h"
#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IString> Text(const std::wstring& text)
{
    return SmartPtr<IString>::Adopt(ISCreate(CREFString(text.data(), int32_t(text.size()))));
}

std::wstring Copy(tagREFString view)
{
    return view.m_Length > 0 && view.m_Buffer ? std::wstring(view.m_Buffer, size_t(view.m_Length)) : std::wstring();
}

// The folder a translation's books are looked for in, opened once: each book's name is
// then looked up from there, not walked to from the root again.
class BookFolder {
public:
    explicit BookFolder(const std::wstring& folder)
    {
        char name[kFileNameBytes];
        FileNameToUTF8(CREFString(folder.data(), int32_t(folder.size())), name);
        m_Prefix = std::string(name) + "/";
        if (name[0] != '\0')
            m_Folder = ::open(name, O_PATH | O_DIRECTORY | O_CLOEXEC);
    }
    ~BookFolder()
    {
        if (m_Folder >= 0)
            ::close(m_Folder);
    }
    BookFolder(const BookFolder&) = delete;
    BookFolder& operator=(const BookFolder&) = delete;

    // A path leads to a file when it opens for reading and is no folder. Asked of every
    // book a translation lists, so without opening anything, and with one call where
    // the file's mode already lets everybody read it.
    bool LeadsToFile(const std::wstring& path) const
    {
        char name[kFileNameBytes];
        FileNameToUTF8(CREFString(path.data(), int32_t(path.size())), name);
        int folder = AT_FDCWD;
        const char* rest = name;
        size_t prefix = m_Prefix.size();
        if (m_Folder >= 0 && std::strncmp(name, m_Prefix.c_str(), prefix) == 0 && name[prefix] != '\0' &&
            name[prefix] != '/') {
            folder = m_Folder;
            rest = name + prefix;
        }
        struct stat status;
        if (::fstatat(folder, rest, &status, 0) != 0 || S_ISDIR(status.st_mode))
            return false;
        constexpr mode_t kReadableByAll = S_IRUSR | S_IRGRP | S_IROTH;
        return (status.st_mode & kReadableByAll) == kReadableByAll || ::faccessat(folder, rest, R_OK, 0) == 0;
    }

private:
    std::string m_Prefix;
    int m_Folder = -1;
};

bool IsNamed(tagREFString text, const wchar_t* name)
{
    return CREFString(name).CompareI(text, 0) == S_OK;
}

} // namespace

SmartPtr<IMessageWindow> CVXBible::ShowLoading()
{
    auto window = Make<IMessageWindow>(REFLiteral(L"MessageWindow"));
    SmartPtr<IString> name;
    get_Name(name.Receive());
    if (window)
        window->Show(name);
    return window;
}

int32_t CVXBible::Load()
{
    if (m_HasFile)
        return S_OK;
    Clear();
    // Even a failed load counts: the Bible is not read twice.
    m_Modified = 0;
    m_HasFile = 1;
    CREFString extension = BibleExtension(m_Filename);
    if (IsNamed(extension, L"tBL")) {
        m_Compressed = 1;
        auto stream = Make<IFolderStream>(REFLiteral(L"FolderStream"));
        if (!stream)
            return E_FAIL;
        // Up for the length of the load.
        SmartPtr<IMessageWindow> window = ShowLoading();
        if (auto archive = stream.As<IFileArchive>()) {
            archive->put_Filename(m_Filename);
            archive->Load();
        }
        SmartPtr<IUnknown> self(static_cast<IDataPersist*>(this));
        IUnknown* target = self.get();
        return stream->ReadObject(Text(kObjectName), &target, 0x80000);
    }
    if (IsNamed(extension, L"xml")) {
        SmartPtr<IMessageWindow> window = ShowLoading();
        auto file = Make<IXMLFile>(REFLiteral(L"XMLFile"));
        auto archive = file.As<IFileArchive>();
        if (archive) {
            archive->put_Filename(m_Filename);
            archive->Load();
        }
        ReadXMLParamters(file.As<IParameters>());
        return S_OK;
    }
    if (IsNamed(extension, L"htm")) {
        auto stream = Make<IXMLStream>(REFLiteral(L"XMLStream"));
        void* text = nullptr;
        unsigned long length = 0;
        if (stream && FileArchiveLoad(CREFString(m_Filename.get()), &text, &length, 1, 0) >= 0) {
            stream->SetBuffer(text, int(length * 4), 0);
            delete[] static_cast<wchar_t*>(text);
            Readxml(stream);
        }
        return S_OK;
    }
    // Anything else is a folder, named after its translation.
    CREFString file(m_Filename.get());
    int32_t slash = -1;
    for (int32_t i = 0; i < file.m_Length; ++i)
        if (file.m_Buffer[i] == L'/')
            slash = i;
    CREFString folderName = slash <= 0 ? file : CREFString(file.m_Buffer + slash + 1, file.m_Length - slash - 1);
    m_Translation = Text(Copy(folderName));
    std::wstring capitals;
    for (int32_t i = 0; i < folderName.m_Length; ++i)
        if (std::iswupper(wint_t(folderName.m_Buffer[i])))
            capitals += folderName.m_Buffer[i];
    m_Abbreviation = Text(capitals);
    return Load(m_Filename);
}

int32_t CVXBible::Load(IString* folder)
{
    if (!folder)
        return E_FAIL;
    std::wstring base = Copy(CREFString(folder));
    auto ini = Make<IFileArchive>(REFLiteral(L"INIFile"));
    SmartPtr<IParameters> parameters;
    if (ini) {
        ini->put_Filename(Text(base + L"/bible.ini"));
        if (auto settings = ini.As<IINIFile>())
            settings->put_Section(Text(L"Bible"));
        if (ini->Load() >= 0)
            parameters = ini.As<IParameters>();
    }
    int books = BIBLE_BOOK_COUNT;
    if (parameters) {
        int count = 0;
        parameters->get_Count(&count);
        int index = -1;
        if (parameters->get_Index(Text(L"Abbreviation"), &index) >= 0) {
            SmartPtr<IUnknown> value;
            parameters->get_Item(index, value.Receive());
            m_Abbreviation = Text(Copy(CREFString(value.get())));
            --count;
        }
        // One entry alone can't say how many books there are.
        if (count > 1)
            books = count;
    }
    BookFolder files(base);
    for (int i = 1; i <= books; ++i) {
        // Past the table only bible.ini can name a book.
        std::wstring tableName = i <= BIBLE_BOOK_COUNT ? BIBLEBOOKS[i - 1] : L"";
        SmartPtr<IString> configured;
        if (parameters) {
            int index = -1;
            if (parameters->get_Index(Text(std::to_wstring(i)), &index) >= 0) {
                SmartPtr<IUnknown> value;
                parameters->get_Item(index, value.Receive());
                configured = Text(Copy(CREFString(value.get())));
            }
        }
        CREFString trimmed(configured.get());
        trimmed.TrimLeft(false);
        std::wstring path;
        if (!trimmed.IsEmpty() && files.LeadsToFile(base + L"/" + Copy(trimmed) + L".bbl"))
            path = base + L"/" + Copy(trimmed) + L".bbl";
        else if (!tableName.empty() && files.LeadsToFile(base + L"/" + tableName + L".bbl"))
            path = base + L"/" + tableName + L".bbl";
        if (path.empty())
            continue;
        SmartPtr<IString> name = configured ? configured : Text(tableName);
        if (SmartPtr<IVXBook> book = FolderBook(Text(path), name))
            Add(name, book, nullptr, 0);
    }
    return S_OK;
}

SmartPtr<IVXBook> CVXBible::FolderBook(IString* path, IString* name)
{
    IID iid = IID_IFileArchive;
    SmartPtr<IFileArchive> archive;
    if (CreateVXBibleBook(nullptr, &iid, archive.ReceiveVoid()) < 0 || !archive)
        return nullptr;
    archive->put_Filename(path);
    // The names go in as properties, as any owner of a book sets them. The heading
    // word is the shown name, so a book renamed in bible.ini needs headings to match.
    if (auto properties = archive.As<IUIPropInterrogateEx>()) {
        properties->ControlEx(BOOK_PROP_USERNAME, name);
        properties->ControlEx(BOOK_PROP_NAMEINTEXT, name);
        properties->ControlEx(BOOK_PROP_TRANSLATION, m_Abbreviation);
    }
    return archive.As<IVXBook>();
}

int32_t CVXBible::ReadXMLParamters(IParameters* parameters)
{
    if (!parameters)
        return S_OK;
    int count = 0;
    parameters->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> entry;
        parameters->get_ItemName(i, entry.Receive());
        // Over the shorter of the two: "Books" and "Bo" both count as "Book".
        CREFString entryName(entry.get());
        CREFString book(L"Book");
        if (entryName.IsEmpty() || book.CompareI(entryName, 0) < 0)
            continue;
        SmartPtr<IUnknown> descriptor;
        parameters->get_ItemDescriptor(i, descriptor.Receive());
        SmartPtr<IString> name;
        if (auto attributes = descriptor.As<INamedCollection>()) {
            int index = -1;
            if (attributes->get_Index(Text(L"name"), &index) >= 0) {
                SmartPtr<IUnknown> value;
                attributes->get_Item(index, value.Receive());
                name = value.As<IString>();
            }
        }
        auto made = Make<IVXBook>(REFLiteral(L"VXBook"));
        if (!made)
            continue;
        Add(name, made, nullptr, 0);
        SmartPtr<IUnknown> content;
        parameters->get_Item(i, content.Receive());
        if (auto filler = made.As<IVXBookEx>())
            filler->Load(content.As<IParameters>());
    }
    return S_OK;
}
