// "VXSongConvert": its parameters and faces, the grammar of the long text, every
// verse of the sample found at its place in the written books, and the step's
// parameters and inputs through a folder stream.
#include <fstream>
#include <map>
#include <regex>

#include "persistence/FileBuffer.h"
#include "persistence/ParametersStream.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "support/Fixture.h"
#include "support/ScopedRegistry.h"
#include "support/Streams.h"
#include "support/Values.h"

using namespace vxtest;
namespace fs = std::filesystem;

namespace {

// The wide text of a file as the module reads it.
std::wstring LoadText(const fs::path& file)
{
    std::wstring name = file.wstring();
    void* data = nullptr;
    unsigned long size = 0;
    if (FileArchiveLoad(CREFString(name.data(), int32_t(name.size())), &data, &size, FILELOAD_TEXT, 0) < 0)
        return L"<missing>";
    std::wstring text(static_cast<wchar_t*>(data), size);
    delete[] static_cast<wchar_t*>(data);
    while (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return text;
}

// The lines of a written book, read back by the framework's string collection.
std::vector<std::wstring> BookLines(const fs::path& file)
{
    // An empty file has no lines, and is no file to load.
    if (fs::exists(file) && fs::file_size(file) == 0)
        return {};
    auto lines = Create<IStringCollection>(L"StringCollection");
    if (ArchiveLoad(lines, file) < 0)
        return {L"<missing>"};
    std::vector<std::wstring> out;
    int count = 0;
    lines->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> line;
        lines->get_Item(i, line.Receive());
        out.push_back(Text(line));
    }
    return out;
}

class SongConvertTest : public ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        m_Step = Create<IParameters>(L"VXSongConvert");
        ASSERT_TRUE(m_Step);
    }

    // Runs the step on `input` into a new folder "out"; the step's result.
    int32_t Convert(const fs::path& input)
    {
        fs::create_directories(m_Out);
        m_Step->put_Item(0, Variant(input.wstring()));
        m_Step->put_Item(1, Variant(m_Out.wstring()));
        return m_Step.As<IStep>()->TurnOn();
    }

    int32_t ConvertText(const std::string& text)
    {
        WriteBytes(m_Folder / "in.txt", text);
        return Convert(m_Folder / "in.txt");
    }

    // Every file of the output folder with its lines; bible.ini as its text.
    std::map<std::wstring, std::vector<std::wstring>> Output()
    {
        std::map<std::wstring, std::vector<std::wstring>> files;
        for (const auto& entry : fs::directory_iterator(m_Out)) {
            std::wstring name = entry.path().filename().wstring();
            files[name] = name == L"bible.ini" ? std::vector<std::wstring>{LoadText(entry.path())}
                                               : BookLines(entry.path());
        }
        return files;
    }

    TempFolder m_Folder;
    fs::path m_Out = m_Folder / "out";
    SmartPtr<IParameters> m_Step;
};

TEST_F(SongConvertTest, ParametersInTheirOrderAndTheStepsFaces)
{
    struct Item {
        const wchar_t* m_Name;
        int m_Flags;
        const wchar_t* m_Value;
    };
    const Item expected[] = {
        {L"InFileItem", 0x16, L"0"}, {L"SavePath", 0x26, L""}, {L"ConversionType", 0, L"0"},
        {L"OutFileItem", 0x4000027, L"0"}};
    int count = 0;
    m_Step->get_Count(&count);
    ASSERT_EQ(count, 4);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IVariant> value;
        int flags = 0;
        m_Step->Iterate(i, name.Receive(), value.Receive(), nullptr, &flags);
        EXPECT_EQ(Text(name), expected[i].m_Name);
        EXPECT_EQ(flags, expected[i].m_Flags) << i;
        EXPECT_EQ(Text(SmartPtr<IString>::Adopt(ISCreate(value.get()))), expected[i].m_Value) << i;
    }
    EXPECT_TRUE(m_Step.As<IStepEx>() && m_Step.As<IDataPersist>() && m_Step.As<IBindableObject>() &&
                m_Step.As<IReplicableObject>() && m_Step.As<IInputParameters>());
    auto step = m_Step.As<IStep>();
    EXPECT_EQ(step->TurnOff(), E_NOTIMPL);
    EXPECT_EQ(step->IsRunning(), 0);
    EXPECT_EQ(step->get_ExecutionTime(nullptr), S_OK);

    SmartPtr<INamedCollection> pages;
    ASSERT_EQ(m_Step.As<IUIPropertyPageSpecify>()->GetPages(0, pages.Receive(), nullptr), S_OK);
    pages->get_Count(&count);
    SmartPtr<IUnknown> page;
    pages->get_Item(0, page.Receive());
    EXPECT_EQ(count, 1);
    EXPECT_EQ(Text(page), L"UIPropPages.UIParametersPropPage");
}

TEST_F(SongConvertTest, GrammarOfTheLongText)
{
    using Files = std::map<std::wstring, std::vector<std::wstring>>;
    const std::wstring head = L"[Bible]\r\nabbreviation = VDCC\r\n";
    struct Case {
        const char* m_What;
        std::string m_Input;
        Files m_Files;
    };
    const Case cases[] = {
        {"one book", "Ruth\r\n1\r\n1. a\r\n2. b\r\n",
         {{L"Ruth.bbl", {L"Ruth 1", L"1. a", L"2. b"}}, {L"bible.ini", {head + L"1 = Ruth\r\n"}}}},
        {"two books, blank lines kept", "  A  \r\n1\r\n1. x\r\n\r\nB\r\n2\r\n3. y\r\n",
         {{L"A.bbl", {L"A 1", L"1. x", L""}},
          {L"B.bbl", {L"B 2", L"3. y"}},
          {L"bible.ini", {head + L"1 = A\r\n2 = B\r\n"}}}},
        {"a digit and a letter start a book", "A\r\n1\r\n1. x\r\n1a\r\n2\r\n1. y\r\n",
         {{L"A.bbl", {L"A 1", L"1. x"}}, {L"1a.bbl", {L"1a 2", L"1. y"}}, {L"bible.ini", {head + L"1 = A\r\n2 = 1a\r\n"}}}},
        {"a number with a point is a verse", "A\r\n12\r\n5.\r\n",
         {{L"A.bbl", {L"A 12", L"5."}}, {L"bible.ini", {head + L"1 = A\r\n"}}}},
        {"a remark after a chapter number is ignored", "A\r\n1\r\nremark\r\n1. x\r\n",
         {{L"A.bbl", {L"A 1", L"1. x"}}, {L"bible.ini", {head + L"1 = A\r\n"}}}},
        {"verses before any title go to a file without a name", "1. x\r\n2. y\r\n",
         {{L".bbl", {L"1. x", L"2. y"}}, {L"bible.ini", {head}}}},
        {"lines before the first title are dropped", "1. x\r\nA\r\n1\r\n1. y\r\n",
         {{L"A.bbl", {L"A 1", L"1. y"}}, {L"bible.ini", {head + L"1 = A\r\n"}}}},
        {"a separator in a name stays inside the folder", "I/II\r\n1\r\n1. x\r\n",
         {{L"I_II.bbl", {L"I/II 1", L"1. x"}}, {L"bible.ini", {head + L"1 = I/II\r\n"}}}},
        {"an empty input", "", {{L".bbl", {}}, {L"bible.ini", {head}}}},
    };
    // No target folder: nothing is written anywhere.
    m_Step->put_Item(1, Variant(L""));
    EXPECT_EQ(m_Step.As<IStep>()->TurnOn(), E_FAIL);
    for (const Case& c : cases) {
        fs::remove_all(m_Out);
        EXPECT_EQ(ConvertText(c.m_Input), S_OK) << c.m_What;
        EXPECT_EQ(Output(), c.m_Files) << c.m_What;
    }
}

// A property page stores a plain string; the step reads it back as a string. Off
// until the framework's variant keeps a string given by put_Object as a string.
TEST_F(SongConvertTest, PathsGivenAsPlainStringsAreRead)
{
    WriteBytes(m_Folder / "in.txt", "A\r\n1\r\n1. x\r\n");
    fs::create_directories(m_Out);
    m_Step->put_Item(0, Str((m_Folder / "in.txt").wstring()));
    m_Step->put_Item(1, Str(m_Out.wstring()));
    ASSERT_EQ(m_Step.As<IStep>()->TurnOn(), S_OK);
    EXPECT_EQ(BookLines(m_Out / "A.bbl"), (std::vector<std::wstring>{L"A 1", L"1. x"}));
}

TEST_F(SongConvertTest, MissingInputGivesAnEmptyBookAndTheListHead)
{
    EXPECT_EQ(Convert(m_Folder / "absent.txt"), S_OK);
    auto files = Output();
    EXPECT_EQ(files.size(), 2u);
    EXPECT_EQ(files[L".bbl"], std::vector<std::wstring>{});
    std::string ini = ReadBytes(m_Out / "bible.ini");
    ASSERT_GE(ini.size(), 2u);
    EXPECT_EQ(ini.substr(0, 4), std::string("\xFF\xFE[\0", 4));
}

using VerseKey = std::tuple<std::wstring, int, int>;
const std::wregex kVerseLine(L"^(\\d+)\\. .*$");

// The sample long text's verses by book, chapter and verse number, one-based.
std::map<VerseKey, std::wstring> SampleVerses(const fs::path& sample)
{
    std::map<VerseKey, std::wstring> verses;
    std::wregex chapter(L"^(\\d+)$");
    std::wstring book;
    int chapterNumber = 0;
    std::wstring text = LoadText(sample);
    std::wsmatch match;
    for (size_t start = 0; start < text.size();) {
        size_t end = text.find(L"\r\n", start);
        std::wstring line = text.substr(start, end - start);
        start = end == std::wstring::npos ? text.size() : end + 2;
        if (std::regex_match(line, match, kVerseLine))
            verses[{book, chapterNumber, std::stoi(match[1])}] = line;
        else if (std::regex_match(line, match, chapter))
            chapterNumber = std::stoi(match[1]);
        else if (!line.empty())
            book = line;
    }
    return verses;
}

const fs::path kSample = fs::path(VX_SOURCE_DIR) / "samples/longtext/kjv-jonah-philemon.txt";

// Every verse of the sample is in its book's file, under its chapter's heading.
TEST_F(SongConvertTest, EveryVerseOfTheSampleAtItsPlace)
{
    const fs::path sample = kSample;
    ASSERT_EQ(Convert(sample), S_OK);
    std::map<VerseKey, std::wstring> expected = SampleVerses(sample), found;
    const std::wregex& verse = kVerseLine;
    std::wsmatch match;
    int chapterNumber = 0;
    ASSERT_EQ(expected.size(), 73u);
    for (const std::wstring& name : {std::wstring(L"Jonah"), std::wstring(L"Philemon")}) {
        std::wregex heading(L"^" + name + L" (\\d+)$");
        chapterNumber = 0;
        for (const std::wstring& line : BookLines(m_Out / (name + L".bbl"))) {
            if (std::regex_match(line, match, heading))
                chapterNumber = std::stoi(match[1]);
            else if (std::regex_match(line, match, verse))
                found[{name, chapterNumber, std::stoi(match[1])}] = line;
        }
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(LoadText(m_Out / "bible.ini"), L"[Bible]\r\nabbreviation = VDCC\r\n1 = Jonah\r\n2 = Philemon\r\n");
    double time = -1;
    m_Step.As<IStep>()->get_ExecutionTime(&time);
    EXPECT_GE(time, -1000.0); // set by the run; the sign of its parts is not promised
    // A second run overwrites the same files with the same text.
    auto before = Output();
    ASSERT_EQ(Convert(sample), S_OK);
    EXPECT_EQ(Output(), before);
}

// The converted folder opens as a Bible, and each verse of the input is the verse
// at its place there.
TEST_F(SongConvertTest, TheConvertedFolderOpensAsABible)
{
    ASSERT_EQ(Convert(kSample), S_OK);
    auto bible = Create<IFileArchive>(L"VXBible");
    ASSERT_TRUE(bible);
    bible->put_Filename(Str(m_Out.wstring()));
    ASSERT_GE(bible->Load(), 0);
    auto books = bible.As<INamedCollection>();
    std::map<std::wstring, SmartPtr<IVXBook>> byName;
    int count = 0;
    books->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IUnknown> item;
        books->get_ItemName(i, name.Receive());
        books->get_Item(i, item.Receive());
        if (auto file = item.As<IFileArchive>())
            file->Load();
        byName[Text(name)] = item.As<IVXBook>();
    }
    ASSERT_EQ(byName.size(), 2u);
    int compared = 0;
    for (const auto& [key, line] : SampleVerses(kSample)) {
        const auto& [name, chapter, verse] = key;
        SCOPED_TRACE(Narrow(name + L" " + std::to_wstring(chapter) + L":" + std::to_wstring(verse)));
        ASSERT_TRUE(byName[name]);
        SmartPtr<IString> text;
        ASSERT_GE(byName[name]->get_Verse(chapter - 1, verse - 1, 1, text.Receive()), 0);
        std::wstring got = Text(text);
        while (!got.empty() && (got.back() == L'\r' || got.back() == L'\n'))
            got.pop_back();
        EXPECT_EQ(got, line);
        ++compared;
    }
    EXPECT_EQ(compared, 73);
}

// A moniker that counts its binds and resolves to a fixed object once bound.
class CProbeMoniker : public CObject<CProbeMoniker>, public IObjectInfoImpl<CProbeMoniker>, public ICollectionMoniker {
public:
    static constexpr wchar_t kObjectName[] = L"ProbeMoniker";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<ICollectionMoniker>>;
    int32_t Bind(INamedCollection* collection, int) override
    {
        m_Bound = collection != nullptr;
        ++m_Binds;
        return S_OK;
    }
    int32_t get_Object(const IID& iid, void** out) override
    {
        return m_Bound ? m_Value->QueryInterface(iid, out) : E_FAIL;
    }
    int32_t get_Name(IString** out) override { return E_NOTIMPL; }
    SmartPtr<IUnknown> m_Value{Str(L"bound text").get()};
    bool m_Bound = false;
    int m_Binds = 0;
};

TEST_F(SongConvertTest, BindReachesInputsAndDescriptorsAndTheBoundValueWins)
{
    IID iid = ICollectionMoniker::Iid();
    SmartPtr<ICollectionMoniker> forInput, forDescriptor;
    ASSERT_EQ(CObject<CProbeMoniker>::_CreateInstance(nullptr, &iid, forInput.ReceiveVoid()), S_OK);
    ASSERT_EQ(CObject<CProbeMoniker>::_CreateInstance(nullptr, &iid, forDescriptor.ReceiveVoid()), S_OK);
    auto port = Create<IInputParameter>(L"InputParameter");
    port->put_Source(forInput);
    QueryAs<IParametersCreatable>(m_Step.As<IInputParameters>().get())->Add(Str(L"Port"), nullptr, port, 0);
    auto described = Create<IInputParameter>(L"InputParameter");
    described->put_Source(forDescriptor);
    m_Step->put_ItemDescriptor(1, described);

    SmartPtr<IUnknown> before;
    m_Step->get_Item(1, before.Receive());
    EXPECT_EQ(Text(before), L""); // unbound: the stored value
    auto collection = SmartPtr<INamedCollection>::Adopt(static_cast<INamedCollection*>(
        static_cast<void*>(CREFString::CreateCollection())));
    EXPECT_EQ(m_Step.As<IBindableObject>()->Bind(collection, nullptr), S_OK);
    auto* input = static_cast<CProbeMoniker*>(forInput.get());
    auto* descriptor = static_cast<CProbeMoniker*>(forDescriptor.get());
    EXPECT_EQ(input->m_Binds, 1);
    EXPECT_EQ(descriptor->m_Binds, 1);
    SmartPtr<IUnknown> after;
    m_Step->get_Item(1, after.Receive());
    EXPECT_EQ(Text(after), L"bound text");
}

class SongConvertStreamTest : public SongConvertTest {
protected:
    void SetUp() override
    {
        SongConvertTest::SetUp();
        WriteBytes(m_Registry, "[Workspace]\nInstallPath=/opt/a\n");
    }

    fs::path m_Registry = m_Folder / "registry.ini";
    ScopedRegistry m_Scope{m_Registry};
};

TEST_F(SongConvertStreamTest, StepAndItsInputsThroughAFolderStream)
{
    m_Step->put_Item(0, Variant(L"/opt/a/bibles/kjv.txt"));
    m_Step->put_Item(1, Variant(L"/srv/out"));
    auto input = Create<IInputParameter>(L"InputParameter");
    input->put_Name(REFLiteral(L"Source"));
    input->put_Flags(7);
    auto inputs = m_Step.As<IParametersCreatable>();
    auto ports = QueryAs<IParametersCreatable>(m_Step.As<IInputParameters>().get());
    ASSERT_TRUE(ports);
    ports->Add(Str(L"Source"), nullptr, input, 0);

    auto stream = Create<IDataStream>(L"FolderStream");
    EXPECT_EQ(m_Step.As<IDataPersist>()->Save(stream, 0), S_OK);
    WriteBytes(m_Registry, "[Workspace]\nInstallPath=/srv/moved\n");
    auto copy = Create<IDataPersist>(L"VXSongConvert");
    EXPECT_EQ(copy->Load(stream, 0), S_OK);

    auto parameters = QueryAs<IParameters>(copy.get());
    SmartPtr<IUnknown> inFile, savePath;
    parameters->get_Item(0, inFile.Receive());
    parameters->get_Item(1, savePath.Receive());
    EXPECT_EQ(Text(inFile), L"/srv/moved/bibles/kjv.txt");
    EXPECT_EQ(Text(savePath), L"/srv/out");
    auto loadedInputs = QueryAs<IInputParameters>(copy.get());
    int count = 0;
    loadedInputs->get_Count(&count);
    ASSERT_EQ(count, 1);
    SmartPtr<IUnknown> port;
    loadedInputs->get_Item(0, port.Receive());
    auto loadedInput = port.As<IInputParameter>();
    ASSERT_TRUE(loadedInput);
    SmartPtr<IString> name;
    int flags = 0;
    loadedInput->get_Name(name.Receive());
    loadedInput->get_Flags(&flags);
    EXPECT_EQ(Text(name), L"Source");
    EXPECT_EQ(flags, 7);
}

TEST_F(SongConvertStreamTest, LoadAcceptsOnlyTheTwoStreamKindsAndXMLKeepsParametersOnly)
{
    auto persist = m_Step.As<IDataPersist>();
    EXPECT_EQ(persist->Load(nullptr, 0), E_NOTIMPL);
    EXPECT_EQ(persist->Load(Create<IDataStream>(L"DataStream"), 0), E_NOTIMPL);
    EXPECT_EQ(persist->Save(nullptr, 0), S_OK);

    m_Step->put_Item(2, Variant(L"5"));
    auto xml = Create<IDataStream>(L"XMLStream");
    xml->SetBuffer(nullptr, 0, 0);
    EXPECT_EQ(persist->Save(xml, 0), S_OK);
    std::wstring text = WideBuffer(xml);
    EXPECT_NE(text.find(L"<ConversionType>5</ConversionType>"), std::wstring::npos) << Narrow(text);
    EXPECT_EQ(text.find(L"InputParameters"), std::wstring::npos);

    auto copy = Create<IParameters>(L"VXSongConvert");
    EXPECT_EQ(copy.As<IDataPersist>()->Load(XMLReader(text), 0), S_OK);
    SmartPtr<IVariant> value;
    copy->get_ItemVariant(2, value.Receive());
    EXPECT_EQ(value->get_Integer(), 5);
}

TEST_F(SongConvertStreamTest, ReplicaHasTheValuesAndItsOwnInputs)
{
    m_Step->put_Item(1, Variant(L"/srv/out"));
    auto input = Create<IInputParameter>(L"InputParameter");
    input->put_Name(REFLiteral(L"Port"));
    m_Step->put_ItemDescriptor(3, input);

    SmartPtr<IUnknown> replica;
    ASSERT_EQ(m_Step.As<IReplicableObject>()->Replicate(replica.Receive()), S_OK);
    auto copy = QueryAs<IParameters>(replica.get());
    ASSERT_TRUE(copy);
    SmartPtr<IUnknown> savePath, descriptor;
    copy->get_Item(1, savePath.Receive());
    EXPECT_EQ(Text(savePath), L"/srv/out");
    copy->get_ItemDescriptor(3, descriptor.Receive());
    auto copiedInput = descriptor.As<IInputParameter>();
    ASSERT_TRUE(copiedInput);
    EXPECT_FALSE(SameObject(copiedInput.get(), input.get()));
    SmartPtr<IString> name;
    copiedInput->get_Name(name.Receive());
    EXPECT_EQ(Text(name), L"Port");
}

} // namespace

// The deuterocanonical books of a translation that has them stand between the
// testaments; their names begin with a numeral, hold brackets, or have one chapter.
TEST_F(SongConvertTest, BooksBetweenTheTestamentsAreBooksLikeAnyOther)
{
    struct Book {
        std::wstring m_Name;
        std::wstring m_File;
        int m_Chapter;
        std::wstring m_Verse;
    };
    const Book books[] = {
        {L"Malachi", L"Malachi.bbl", 1, L"1. A revelation"},
        {L"Tobit", L"Tobit.bbl", 1, L"1. The book of the words of Tobit"},
        {L"Esther (Greek)", L"Esther (Greek).bbl", 1, L"1. In the second year"},
        {L"1 Maccabees", L"1 Maccabees.bbl", 1, L"1. After Alexander"},
        {L"II Maccabees", L"II Maccabees.bbl", 1, L"1. The brothers"},
        {L"Additional Psalm", L"Additional Psalm.bbl", 1, L"1. I was small among my brothers,"},
        {L"Matthew", L"Matthew.bbl", 1, L"1. The book of the genealogy"},
    };
    std::wstring text;
    std::wstring list = L"[Bible]\r\nabbreviation = VDCC\r\n";
    for (size_t i = 0; i < std::size(books); ++i) {
        text += books[i].m_Name + L"\r\n" + std::to_wstring(books[i].m_Chapter) + L"\r\n" + books[i].m_Verse + L"\r\n";
        list += std::to_wstring(i + 1) + L" = " + books[i].m_Name + L"\r\n";
    }
    ASSERT_EQ(ConvertText(Narrow(text)), S_OK);
    auto files = Output();
    EXPECT_EQ(files[L"bible.ini"], std::vector<std::wstring>{list});
    EXPECT_EQ(files.size(), std::size(books) + 1);

    auto bible = Create<IFileArchive>(L"VXBible");
    bible->put_Filename(Str(m_Out.wstring()));
    ASSERT_GE(bible->Load(), 0);
    auto collection = bible.As<INamedCollection>();
    int count = 0;
    collection->get_Count(&count);
    ASSERT_EQ(count, int(std::size(books)));
    for (int i = 0; i < count; ++i) {
        const Book& book = books[i];
        SCOPED_TRACE(Narrow(book.m_Name));
        EXPECT_EQ(files[book.m_File],
                  (std::vector<std::wstring>{book.m_Name + L" " + std::to_wstring(book.m_Chapter), book.m_Verse}));
        SmartPtr<IString> name;
        SmartPtr<IUnknown> item;
        collection->get_ItemName(i, name.Receive());
        collection->get_Item(i, item.Receive());
        EXPECT_EQ(Text(name), book.m_Name);
        if (auto file = item.As<IFileArchive>())
            file->Load();
        auto loaded = item.As<IVXBook>();
        ASSERT_TRUE(loaded);
        SmartPtr<IString> verse;
        ASSERT_GE(loaded->get_Verse(book.m_Chapter - 1, 0, 1, verse.Receive()), 0);
        std::wstring got = Text(verse);
        while (!got.empty() && (got.back() == L'\r' || got.back() == L'\n'))
            got.pop_back();
        EXPECT_EQ(got, book.m_Verse);
    }
}
