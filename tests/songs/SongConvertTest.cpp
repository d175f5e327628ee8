// "VXSongConvert": its parameters, the grammar of the long text, every verse of the
// sample at its place in the Bible the written books make, and the step through its streams.
#include <map>
#include <regex>

#include "persistence/FileBuffer.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "support/Collections.h"
#include "support/ScopedRegistry.h"
#include "support/Streams.h"
#include "support/TextBytes.h"
#include "support/Values.h"

using namespace vxtest;
namespace fs = std::filesystem;

namespace {

using Lines = std::vector<std::wstring>;
using Files = std::map<std::wstring, Lines>;
const std::wstring kHead = L"[Bible]\r\nabbreviation = VDCC\r\n";
const fs::path kSample = fs::path(VX_SOURCE_DIR) / "samples/longtext/kjv-jonah-philemon.txt";

// The wide text of a file as the module reads it.
std::wstring LoadText(const fs::path& file)
{
    std::wstring name = file.wstring();
    void* data = nullptr;
    unsigned long size = 0;
    if (FileArchiveLoad(View(name), &data, &size, FILELOAD_TEXT, 0) < 0)
        return L"<missing>";
    std::wstring text(static_cast<wchar_t*>(data), size);
    delete[] static_cast<wchar_t*>(data);
    while (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return text;
}

template <class C> int Size(C* collection)
{
    int count = 0;
    collection->get_Count(&count);
    return count;
}

// The lines of a written book, read back by the framework's string collection.
Lines BookLines(const fs::path& file)
{
    // An empty file has no lines, and is no file to load.
    if (fs::exists(file) && fs::file_size(file) == 0)
        return {};
    auto lines = Create<IStringCollection>(L"StringCollection");
    if (ArchiveLoad(lines, file) < 0)
        return {L"<missing>"};
    Lines out;
    for (int i = 0, count = Size(lines.get()); i < count; ++i) {
        SmartPtr<IUnknown> line;
        lines->get_Item(i, line.Receive());
        out.push_back(Text(line));
    }
    return out;
}

// A converted folder opened as a Bible: its book names in order, and verses by place.
struct OpenBible {
    explicit OpenBible(const fs::path& folder) : m_Bible(Create<IFileArchive>(L"VXBible"))
    {
        m_Bible->put_Filename(Str(folder.wstring()));
        EXPECT_GE(m_Bible->Load(), 0);
        m_Names = ItemNames(m_Bible);
        auto books = m_Bible.As<INamedCollection>();
        for (size_t i = 0; i < m_Names.size(); ++i) {
            SmartPtr<IUnknown> item;
            books->get_Item(int(i), item.Receive());
            if (auto file = item.As<IFileArchive>())
                file->Load();
            m_Books[m_Names[i]] = item.As<IVXBook>();
        }
    }
    // One-based; without the line end.
    std::wstring Verse(const std::wstring& book, int chapter, int verse)
    {
        SmartPtr<IString> text;
        if (!m_Books[book] || m_Books[book]->get_Verse(chapter - 1, verse - 1, 1, text.Receive()) < 0)
            return L"<missing>";
        std::wstring got = Text(text);
        while (!got.empty() && (got.back() == L'\r' || got.back() == L'\n'))
            got.pop_back();
        return got;
    }
    SmartPtr<IFileArchive> m_Bible;
    Lines m_Names;
    std::map<std::wstring, SmartPtr<IVXBook>> m_Books;
};

// The sample's verse lines by book, chapter and verse number, as a reader of the text finds them.
std::map<std::tuple<std::wstring, int, int>, std::wstring> SampleVerses()
{
    std::map<std::tuple<std::wstring, int, int>, std::wstring> verses;
    const std::wregex verse(L"^(\\d+)\\. .*$"), chapter(L"^(\\d+)$");
    std::wstring text = LoadText(kSample), book;
    int chapterNumber = 0;
    std::wsmatch match;
    for (size_t start = 0; start < text.size();) {
        size_t end = text.find(L"\r\n", start);
        std::wstring line = text.substr(start, end - start);
        start = end == std::wstring::npos ? text.size() : end + 2;
        if (std::regex_match(line, match, verse))
            verses[{book, chapterNumber, std::stoi(match[1])}] = line;
        else if (std::regex_match(line, match, chapter))
            chapterNumber = std::stoi(match[1]);
        else if (!line.empty())
            book = line;
    }
    return verses;
}

class SongConvertTest : public ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        m_Step = Create<IParameters>(L"VXSongConvert");
        ASSERT_TRUE(m_Step);
    }

    // Runs the step on `input` into a new folder "out"; the step's result. A property page
    // stores the paths as plain strings, not as variants.
    int32_t Convert(const fs::path& input, bool plainStrings = false)
    {
        fs::create_directories(m_Out);
        auto value = [&](const fs::path& path) {
            return plainStrings ? SmartPtr<IUnknown>(Str(path.wstring()).get()) : Var(path.wstring());
        };
        m_Step->put_Item(0, value(input));
        m_Step->put_Item(1, value(m_Out));
        return m_Step.As<IStep>()->TurnOn();
    }

    int32_t ConvertText(const std::string& text, bool plainStrings = false)
    {
        WriteBytes(m_Folder / "in.txt", text);
        return Convert(m_Folder / "in.txt", plainStrings);
    }

    // Every file of the output folder with its lines; bible.ini as its text.
    Files Output()
    {
        Files files;
        for (const auto& entry : fs::directory_iterator(m_Out)) {
            std::wstring name = entry.path().filename().wstring();
            files[name] = name == L"bible.ini" ? Lines{LoadText(entry.path())} : BookLines(entry.path());
        }
        return files;
    }

    static std::wstring Item(IParameters* step, int index)
    {
        SmartPtr<IUnknown> value;
        step->get_Item(index, value.Receive());
        return Text(value);
    }

    TempFolder m_Folder;
    fs::path m_Out = m_Folder / "out";
    SmartPtr<IParameters> m_Step;
};

TEST_F(SongConvertTest, ParametersInTheirOrderAndTheStepsFaces)
{
    const struct { const wchar_t* name; int flags; const wchar_t* value; } expected[] = {
        {L"InFileItem", 0x16, L"0"}, {L"SavePath", 0x26, L""}, {L"ConversionType", 0, L"0"},
        {L"OutFileItem", 0x4000027, L"0"}};
    ASSERT_EQ(Size(m_Step.get()), 4);
    for (int i = 0; i < 4; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IVariant> value;
        int flags = 0;
        m_Step->Iterate(i, name.Receive(), value.Receive(), nullptr, &flags);
        EXPECT_EQ(Text(name), expected[i].name);
        EXPECT_EQ(flags, expected[i].flags) << i;
        EXPECT_EQ(Text(SmartPtr<IString>::Adopt(ISCreate(value.get()))), expected[i].value) << i;
    }
    EXPECT_TRUE(m_Step.As<IStepEx>() && m_Step.As<IUIPropertyPageSpecify>());
    EXPECT_EQ(m_Step.As<IStep>()->TurnOff(), E_NOTIMPL);
    EXPECT_EQ(m_Step.As<IStep>()->get_ExecutionTime(nullptr), S_OK);
}

TEST_F(SongConvertTest, GrammarOfTheLongText)
{
    // A null input: a file that isn't there.
    const struct { const char* what; const char* input; Files files; bool plainStrings = false; } cases[] = {
        {"one book", "Ruth\r\n1\r\n1. a\r\n2. b\r\n",
         {{L"Ruth.bbl", {L"Ruth 1", L"1. a", L"2. b"}}, {L"bible.ini", {kHead + L"1 = Ruth\r\n"}}}},
        {"paths given as plain strings", "Ruth\r\n1\r\n1. a\r\n",
         {{L"Ruth.bbl", {L"Ruth 1", L"1. a"}}, {L"bible.ini", {kHead + L"1 = Ruth\r\n"}}}, true},
        {"two books, blank lines kept", "  A  \r\n1\r\n1. x\r\n\r\nB\r\n2\r\n3. y\r\n",
         {{L"A.bbl", {L"A 1", L"1. x", L""}}, {L"B.bbl", {L"B 2", L"3. y"}},
          {L"bible.ini", {kHead + L"1 = A\r\n2 = B\r\n"}}}},
        {"a digit and a letter start a book", "A\r\n1\r\n1. x\r\n1a\r\n2\r\n1. y\r\n",
         {{L"A.bbl", {L"A 1", L"1. x"}}, {L"1a.bbl", {L"1a 2", L"1. y"}},
          {L"bible.ini", {kHead + L"1 = A\r\n2 = 1a\r\n"}}}},
        {"a number with a point is a verse", "A\r\n12\r\n5.\r\n",
         {{L"A.bbl", {L"A 12", L"5."}}, {L"bible.ini", {kHead + L"1 = A\r\n"}}}},
        {"a remark after a chapter number is ignored", "A\r\n1\r\nremark\r\n1. x\r\n",
         {{L"A.bbl", {L"A 1", L"1. x"}}, {L"bible.ini", {kHead + L"1 = A\r\n"}}}},
        {"verses before any title go to a file without a name", "1. x\r\n2. y\r\n",
         {{L".bbl", {L"1. x", L"2. y"}}, {L"bible.ini", {kHead}}}},
        {"lines before the first title are dropped", "1. x\r\nA\r\n1\r\n1. y\r\n",
         {{L"A.bbl", {L"A 1", L"1. y"}}, {L"bible.ini", {kHead + L"1 = A\r\n"}}}},
        {"a separator in a name stays inside the folder", "I/II\r\n1\r\n1. x\r\n",
         {{L"I_II.bbl", {L"I/II 1", L"1. x"}}, {L"bible.ini", {kHead + L"1 = I/II\r\n"}}}},
        {"an empty input", "", {{L".bbl", {}}, {L"bible.ini", {kHead}}}},
        {"a missing input", nullptr, {{L".bbl", {}}, {L"bible.ini", {kHead}}}},
    };
    // No target folder: nothing is written anywhere.
    m_Step->put_Item(1, Variant(L""));
    EXPECT_EQ(m_Step.As<IStep>()->TurnOn(), E_FAIL);
    for (const auto& c : cases) {
        fs::remove_all(m_Out);
        EXPECT_EQ(c.input ? ConvertText(c.input, c.plainStrings) : Convert(m_Folder / "absent.txt"), S_OK) << c.what;
        EXPECT_EQ(Output(), c.files) << c.what;
    }
    EXPECT_EQ(ReadBytes(m_Out / "bible.ini").substr(0, 4), std::string("\xFF\xFE[\0", 4));
}

TEST_F(SongConvertTest, EveryVerseOfTheSampleAtItsPlace)
{
    ASSERT_EQ(Convert(kSample), S_OK);
    EXPECT_EQ(LoadText(m_Out / "bible.ini"), kHead + L"1 = Jonah\r\n2 = Philemon\r\n");
    // The reader forgives a heading's blanks; the file is still written in the one form.
    EXPECT_EQ(BookLines(m_Out / "Philemon.bbl").at(0), L"Philemon 1");
    auto verses = SampleVerses();
    ASSERT_EQ(verses.size(), 73u);
    {
        OpenBible bible(m_Out);
        ASSERT_EQ(bible.m_Names, (Lines{L"Jonah", L"Philemon"}));
        for (const auto& [key, line] : verses) {
            const auto& [book, chapter, verse] = key;
            EXPECT_EQ(bible.Verse(book, chapter, verse), line) << Narrow(book) << " " << chapter << ":" << verse;
        }
    }
    // A second run writes the same files again.
    auto before = Output();
    ASSERT_EQ(Convert(kSample), S_OK);
    EXPECT_EQ(Output(), before);
}

// The deuterocanonical books of a translation that has them stand between the
// testaments; their names begin with a numeral, hold brackets, or have one chapter.
TEST_F(SongConvertTest, BooksBetweenTheTestamentsAreBooksLikeAnyOther)
{
    const std::pair<std::wstring, std::wstring> books[] = {
        {L"Malachi", L"1. A revelation"},        {L"Tobit", L"1. The book of the words of Tobit"},
        {L"Esther (Greek)", L"1. In the second year"}, {L"1 Maccabees", L"1. After Alexander"},
        {L"II Maccabees", L"1. The brothers"},   {L"Additional Psalm", L"1. I was small among my brothers,"},
        {L"Matthew", L"1. The book of the genealogy"}};
    std::wstring text, list = kHead;
    Lines names;
    for (const auto& [name, verse] : books) {
        text += name + L"\r\n1\r\n" + verse + L"\r\n";
        names.push_back(name);
        list += std::to_wstring(names.size()) + L" = " + name + L"\r\n";
    }
    ASSERT_EQ(ConvertText(Narrow(text)), S_OK);
    Files files = Output();
    EXPECT_EQ(files[L"bible.ini"], Lines{list});
    EXPECT_EQ(files.size(), std::size(books) + 1);
    OpenBible bible(m_Out);
    EXPECT_EQ(bible.m_Names, names);
    for (const auto& [name, verse] : books) {
        EXPECT_EQ(files[name + L".bbl"], (Lines{name + L" 1", verse}));
        EXPECT_EQ(bible.Verse(name, 1, 1), verse) << Narrow(name);
    }
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
    int32_t get_Name(IString**) override { return E_NOTIMPL; }
    SmartPtr<IUnknown> m_Value{Str(L"bound text").get()};
    bool m_Bound = false;
    int m_Binds = 0;
};

TEST_F(SongConvertTest, BindReachesInputsAndDescriptorsAndTheBoundValueWins)
{
    IID iid = ICollectionMoniker::Iid();
    SmartPtr<ICollectionMoniker> monikers[2];
    for (auto& moniker : monikers)
        ASSERT_EQ(CObject<CProbeMoniker>::_CreateInstance(nullptr, &iid, moniker.ReceiveVoid()), S_OK);
    auto port = Create<IInputParameter>(L"InputParameter");
    port->put_Source(monikers[0]);
    QueryAs<IParametersCreatable>(m_Step.As<IInputParameters>().get())->Add(Str(L"Port"), nullptr, port, 0);
    auto described = Create<IInputParameter>(L"InputParameter");
    described->put_Source(monikers[1]);
    m_Step->put_ItemDescriptor(1, described);

    EXPECT_EQ(Item(m_Step, 1), L""); // unbound: the stored value
    auto collection = SmartPtr<INamedCollection>::Adopt(
        static_cast<INamedCollection*>(static_cast<void*>(CREFString::CreateCollection())));
    EXPECT_EQ(m_Step.As<IBindableObject>()->Bind(collection, nullptr), S_OK);
    for (auto& moniker : monikers)
        EXPECT_EQ(static_cast<CProbeMoniker*>(moniker.get())->m_Binds, 1);
    EXPECT_EQ(Item(m_Step, 1), L"bound text");
}

class SongConvertStreamTest : public SongConvertTest {
protected:
    void SetUp() override
    {
        SongConvertTest::SetUp();
        WriteBytes(m_Registry, "[Workspace]\nInstallPath=/opt/a\n");
    }
    static std::wstring NameAndFlags(IUnknown* object)
    {
        auto input = QueryAs<IInputParameter>(object);
        if (!input)
            return L"<none>";
        SmartPtr<IString> name;
        int flags = 0;
        input->get_Name(name.Receive());
        input->get_Flags(&flags);
        return Text(name) + L" " + std::to_wstring(flags);
    }

    fs::path m_Registry = m_Folder / "registry.ini";
    ScopedRegistry m_Scope{m_Registry};
};

// A copy through a folder stream has the values and the inputs, the input file kept relative to the
// installation so that it follows a moved one; a replica has the values and copies of the descriptors.
TEST_F(SongConvertStreamTest, CopiesThroughAFolderStreamAndAReplica)
{
    m_Step->put_Item(0, Variant(L"/opt/a/bibles/kjv.txt"));
    m_Step->put_Item(1, Variant(L"/srv/out"));
    auto input = Create<IInputParameter>(L"InputParameter");
    input->put_Name(REFLiteral(L"Source"));
    input->put_Flags(7);
    QueryAs<IParametersCreatable>(m_Step.As<IInputParameters>().get())->Add(Str(L"Source"), nullptr, input, 0);
    auto descriptor = Create<IInputParameter>(L"InputParameter");
    descriptor->put_Name(REFLiteral(L"Port"));
    m_Step->put_ItemDescriptor(3, descriptor);

    auto stream = Create<IDataStream>(L"FolderStream");
    EXPECT_EQ(m_Step.As<IDataPersist>()->Save(stream, 0), S_OK);
    WriteBytes(m_Registry, "[Workspace]\nInstallPath=/srv/moved\n");
    auto copy = Create<IParameters>(L"VXSongConvert");
    EXPECT_EQ(copy.As<IDataPersist>()->Load(stream, 0), S_OK);
    EXPECT_EQ(Item(copy, 0) + L"|" + Item(copy, 1), L"/srv/moved/bibles/kjv.txt|/srv/out");
    auto inputs = copy.As<IInputParameters>();
    ASSERT_EQ(Size(inputs.get()), 1);
    SmartPtr<IUnknown> port;
    inputs->get_Item(0, port.Receive());
    EXPECT_EQ(NameAndFlags(port), L"Source 7");

    SmartPtr<IUnknown> replica;
    ASSERT_EQ(m_Step.As<IReplicableObject>()->Replicate(replica.Receive()), S_OK);
    auto replicated = QueryAs<IParameters>(replica.get());
    ASSERT_TRUE(replicated);
    EXPECT_EQ(Item(replicated, 1), L"/srv/out");
    SmartPtr<IUnknown> copied;
    replicated->get_ItemDescriptor(3, copied.Receive());
    EXPECT_EQ(NameAndFlags(copied), L"Port 0");
    EXPECT_FALSE(SameObject(copied, descriptor));
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

} // namespace
