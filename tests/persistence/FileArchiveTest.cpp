// The file archive mixin on a small persistent object: names, flags, and both
// generic forms through the real streams and files.
#include "persistence/FileArchiveImpl.h"
#include "runtime/ObjectInfo.h"
#include "support/Fixture.h"
#include "support/ScopedRegistry.h"

namespace {

using namespace vxtest;

// Keeps one text under "Words", in either form.
class CArchiveProbe : public CObject<CArchiveProbe>,
                      public IObjectInfoImpl<CArchiveProbe>,
                      public IFileArchiveImpl<CArchiveProbe, IFileArchive>,
                      public IDataPersist {
public:
    static constexpr wchar_t kObjectName[] = L"ArchiveProbe";
    using Interfaces =
        QiList<Entry<IObjectInfo>, Chain<IFileArchiveImpl<CArchiveProbe, IFileArchive>>, Entry<IDataPersist>>;
    // The file's Load and Save stay in sight beside the stream's.
    using IFileArchiveImpl::Load;
    using IFileArchiveImpl::Save;

    int32_t Save(IDataStream* stream, int) override
    {
        if (auto xml = QueryAs<IXMLStream>(stream))
            xml->PutAttribute(Str(L"Words"), 0, Str(m_Words), 0);
        if (auto folder = QueryAs<IFolderStream>(stream))
            folder->WriteString(Str(L"Words"), Str(m_Words));
        return S_OK;
    }
    int32_t Load(IDataStream* stream, int flags) override
    {
        m_LoadFlags = flags;
        tagREFString name{0, nullptr};
        for (auto xml = QueryAs<IXMLStream>(stream); xml && xml->NextAttribute(&name) >= 0;) {
            SmartPtr<IUnknown> value;
            xml->GetAttribute(name, nullptr, value.Receive(), 1);
            m_Words = Text(value);
        }
        auto words = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
        if (auto folder = QueryAs<IFolderStream>(stream); folder && folder->ReadString(Str(L"Words"), words) >= 0)
            m_Words = Text(words);
        return S_OK;
    }

    std::wstring m_Words;
    int m_LoadFlags = -1;
};

class FileArchiveTest : public ModuleTest {
protected:
    static SmartPtr<IFileArchive> NewProbe(const std::wstring& file = L"")
    {
        SmartPtr<IFileArchive> archive;
        IID iid = IID_IFileArchive;
        CObject<CArchiveProbe>::_CreateInstance(nullptr, &iid, archive.ReceiveVoid());
        if (!file.empty())
            archive->put_Filename(Str(file));
        return archive;
    }
    // The probe behind its archive face, where the non-virtual forms are.
    static CArchiveProbe* Probe(IFileArchive* archive) { return static_cast<CArchiveProbe*>(archive); }
    std::wstring In(const std::string& name) const { return (m_Folder / name).wstring(); }
    static std::pair<int, int> Flags(IFileArchive* archive)
    {
        int modified = -1, hasFile = -1;
        archive->Inquire(ARCHIVE_MODIFIED, &modified);
        archive->Inquire(ARCHIVE_HASFILE, &hasFile);
        return {modified, hasFile};
    }
    // The low bytes of the 16-bit text behind the mark.
    std::string Narrow16(const std::string& name) const
    {
        std::string bytes = ReadBytes(m_Folder / name), out;
        for (size_t i = 2; i + 1 < bytes.size(); i += 2)
            out += bytes[i];
        return out;
    }

    TempFolder m_Folder;
};

TEST_F(FileArchiveTest, XmlFormWritesMarkAndInstructionsAndReadsBack)
{
    const struct { const wchar_t* m_Sheet; const char* m_Href; } cases[] = {{nullptr, "generic.xsl"}, {L"", "generic.xsl"}, {L"song.xsl", "song.xsl"}};
    for (const auto& c : cases) {
        auto saved = NewProbe(In("a.xml"));
        Probe(saved)->m_Words = L"Amazing <grace> & more";
        SmartPtr<IString> sheet = c.m_Sheet ? Str(c.m_Sheet) : nullptr;
        ASSERT_EQ(c.m_Sheet ? Probe(saved)->SaveXML(sheet, 0) : saved->Save(), S_OK);
        EXPECT_EQ(ReadBytes(m_Folder / "a.xml").substr(0, 2), "\xFF\xFE");
        std::string head = std::string("<?xml version=\"1.0\"?>\r\n<?xml-stylesheet href=\"") + c.m_Href +
                           "\" type=\"text/xsl\"?>\r\n";
        std::string text = Narrow16("a.xml");
        EXPECT_EQ(text.rfind(head, 0), 0u) << text;
        EXPECT_NE(text.find("<ArchiveProbe>", head.size()), std::string::npos) << text;

        auto loaded = NewProbe(In("a.xml"));
        EXPECT_EQ(loaded->Load(), S_OK);
        EXPECT_EQ(Probe(loaded)->m_Words, L"Amazing <grace> & more");
        EXPECT_EQ(Probe(loaded)->m_LoadFlags, COLLECTION_LOAD_CLEAR);
    }
}

TEST_F(FileArchiveTest, FirstLetterOfTheExtensionPicksTheForm)
{
    // m_Start: the file's first bytes; null: no file, and E_FAIL both ways
    const struct { const char* m_Name; const char* m_Start; } cases[] = {{"b.xml", "\xFF\xFE"}, {"c.X", "\xFF\xFE"}, {"d.xyz", "\xFF\xFE"}, {"e.tBL", "PK"},
                 {"f.txt", "PK"},       {"readme", nullptr}, {"g.sng", nullptr}};
    for (const auto& c : cases) {
        auto archive = NewProbe(In(c.m_Name));
        Probe(archive)->m_Words = L"form";
        EXPECT_EQ(archive->Save(), c.m_Start ? S_OK : E_FAIL) << c.m_Name;
        EXPECT_EQ(ReadBytes(m_Folder / c.m_Name).substr(0, 2), c.m_Start ? c.m_Start : "") << c.m_Name;
        auto loaded = NewProbe(In(c.m_Name));
        EXPECT_EQ(loaded->Load() >= 0, c.m_Start != nullptr) << c.m_Name;
        EXPECT_EQ(Probe(loaded)->m_Words, c.m_Start ? L"form" : L"") << c.m_Name;
    }
    // A dot that opens the name starts no extension.
    EXPECT_EQ(NewProbe(L".xml")->Save(), E_FAIL);
}

// With an encoding chosen the XML form is UTF-8 without a mark, and the save reports
// success whatever the write gave; in its own 16-bit form it reports the write's result.
TEST_F(FileArchiveTest, EncodingAboveZeroWritesUTF8WithoutMarkAndAlwaysSucceeds)
{
    auto archive = NewProbe(In("u.xml"));
    Probe(archive)->m_Words = L"caf\u00e9";
    archive->Control(ARCHIVE_ENCODING, 1);
    ASSERT_EQ(archive->Save(), S_OK);
    std::string bytes = ReadBytes(m_Folder / "u.xml");
    EXPECT_EQ(bytes.rfind("<?xml version=\"1.0\"?>\r\n", 0), 0u) << bytes;
    EXPECT_NE(bytes.find("caf\xC3\xA9"), std::string::npos) << bytes;

    archive->put_Filename(Str(In("missing/u.xml")));
    EXPECT_GE(archive->Save(), 0);
    archive->Control(ARCHIVE_ENCODING, -1);
    EXPECT_LT(archive->Save(), 0);
    EXPECT_FALSE(std::filesystem::exists(m_Folder / "missing"));
}

TEST_F(FileArchiveTest, FlagsFollowNamesLoadsAndSaves)
{
    auto archive = NewProbe();
    EXPECT_EQ(Flags(archive), std::make_pair(0, 0));
    archive->put_Filename(Str(In("f.xml")));
    EXPECT_EQ(Flags(archive), std::make_pair(1, 0));
    ASSERT_EQ(archive->Save(), S_OK);
    EXPECT_EQ(Flags(archive), std::make_pair(0, 1));
    archive->put_Filename(Str(In("F.XML")));
    EXPECT_EQ(Flags(archive), std::make_pair(1, 1));
    archive->put_Filename(Str(In("other.xml")));
    EXPECT_EQ(Flags(archive), std::make_pair(1, 0));
    // A failed load still ties the object to the file; a failed save changes nothing.
    archive->put_Filename(Str(In("missing.xml")));
    EXPECT_LT(archive->Load(), 0);
    EXPECT_EQ(Flags(archive), std::make_pair(0, 1));
    archive->put_Filename(Str(In("no/such/folder/x.xml")));
    EXPECT_LT(archive->Save(), 0);
    EXPECT_EQ(Flags(archive), std::make_pair(1, 0));
    archive->put_Filename(nullptr);
    SmartPtr<IString> name;
    EXPECT_EQ(archive->get_Filename(name.Receive()), E_FAIL);
    EXPECT_FALSE(name);
    EXPECT_EQ(archive->Load(), E_FAIL);
    EXPECT_EQ(archive->Unload(), E_NOTIMPL);
}

TEST_F(FileArchiveTest, ControlAndInquireAnswerPerCode)
{
    const int32_t cases[][3] = {{ARCHIVE_MODIFIED, S_OK, 0x40013}, {ARCHIVE_HASFILE, S_OK, 0x40013},
                                {ARCHIVE_NAMEWITHFOLDER, S_OK, S_OK}, {ARCHIVE_PROPERTY3, S_OK, S_OK},
                                {ARCHIVE_ENCODING, S_OK, 0x13},      {5, E_INVALIDARG, E_INVALIDARG}};
    for (const auto& c : cases) {
        auto archive = NewProbe();
        EXPECT_EQ(archive->Control(c[0], 7), c[1]) << c[0];
        int value = 0;
        EXPECT_EQ(archive->Inquire(c[0], &value), c[2]) << c[0];
        EXPECT_EQ(value, c[2] < 0 ? 0 : 7) << c[0];
    }
    // No encoding chosen: nothing is told.
    int value = 42;
    EXPECT_EQ(NewProbe()->Inquire(ARCHIVE_ENCODING, &value), E_INVALIDARG);
    EXPECT_EQ(value, 42);
}

TEST_F(FileArchiveTest, NameDropsFolderAndExtension)
{
    const struct { const wchar_t* m_File; int m_WithFolder; const wchar_t* m_Name; } cases[] = {{L"/a/b/c.sng", 0, L"c"}, {L"/a/b/c.sng", 1, L"b/c"}, {L".hidden", 0, L".hidden"},
                 {L"c.x.sng", 0, L"c.x"},  {L"plain", 1, L"plain"},    {L"/a/b.d/c", 1, L"b"}};
    for (const auto& c : cases) {
        auto archive = NewProbe(c.m_File);
        archive->Control(ARCHIVE_NAMEWITHFOLDER, c.m_WithFolder);
        SmartPtr<IString> name;
        EXPECT_EQ(archive->get_Name(name.Receive()), S_OK) << c.m_File;
        EXPECT_EQ(Text(name), c.m_Name) << c.m_File;
    }
    SmartPtr<IString> none;
    EXPECT_EQ(NewProbe()->get_Name(none.Receive()), E_FAIL);
}

TEST_F(FileArchiveTest, DotSlashNamesAFileBelowTheInstallation)
{
    WriteBytes(m_Folder / "registry.ini", "[Workspace]\nInstallPath=/opt/a\n");
    ScopedRegistry registry(m_Folder / "registry.ini");
    const wchar_t* cases[][2] = {{L"./x.sng", L"/opt/a/x.sng"},
                                 {L".\\songs\\x.sng", L"/opt/a/songs/x.sng"},
                                 {L"./", L"./"},
                                 {L"../x.sng", L"../x.sng"}};
    for (const auto& c : cases) {
        SmartPtr<IString> name;
        NewProbe(c[0])->get_Filename(name.Receive());
        EXPECT_EQ(Text(name), c[1]) << Narrow(c[0]);
    }
}

} // namespace
