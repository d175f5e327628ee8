// The folder stream as the module drives it: items of every kind written, saved to
// a real archive, loaded by a new stream and read back by name and by position.
#include <sys/resource.h>

#include <charconv>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <cstring>
#include <optional>
#include <vector>

#include "support/Collections.h"
#include "support/Streams.h"
#include "support/Values.h"

using namespace vxtest;
namespace fs = std::filesystem;

namespace {

class FolderStreamTest : public ModuleTest {};

SmartPtr<IFolderStream> Folder(IUnknown* object) { return QueryAs<IFolderStream>(object); }

int32_t Save(IFolderStream* stream, const fs::path& file, bool compress = false)
{
    auto archive = QueryAs<IFileArchive>(stream);
    archive->put_Filename(Str(file.wstring()));
    archive->Control(ARCHIVE_COMPRESS, compress ? 1 : 0);
    return archive->Save();
}

std::wstring ReadText(IFolderStream* folder, const wchar_t* name)
{
    auto text = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    EXPECT_GE(folder->ReadString(Str(name), text), 0) << Narrow(name);
    return Text(text);
}

SmartPtr<IFolderStream> Open(IFolderStream* folder, IUnknown* key)
{
    SmartPtr<IDataStream> sub;
    folder->OpenFolder(key, 0, sub.Receive());
    return Folder(sub);
}

const std::wstring kTitle = L"Amazing grace \u00e4 \u20ac \U0001D11E";
const std::vector<std::wstring> kSampleNames = {L"Title", L"Count", L"Scale", L"Flags",
                                                L"Text",  L"Verse 1/2", L"Info", L"Last"};

// One item of every kind, folders and plain items interleaved.
void WriteSample(IFolderStream* root)
{
    ASSERT_GE(root->WriteString(Str(L"Title"), Str(kTitle)), 0);
    ASSERT_GE(root->WriteString(Str(L"Count"), Variant(42)), 0);
    ASSERT_GE(root->WriteString(Str(L"Scale"), Variant(2.5)), 0);
    int32_t flags = 0x1234;
    ASSERT_GE(root->WriteData(Str(L"Flags"), &flags, 4, 0), 0);
    ASSERT_GE(root->CreateBlock(Str(L"Text")), 0);
    root->Write("ab", 2, 0);
    root->Write("cd", 2, 0);
    SmartPtr<IDataStream> verse, deeper;
    ASSERT_GE(root->CreateFolder(Str(L"Verse 1/2"), 0, verse.Receive()), 0);
    Folder(verse)->WriteString(Str(L"Line"), Str(L"first"));
    Folder(verse)->CreateFolder(Str(L"Deeper"), 0, deeper.Receive());
    Folder(deeper)->WriteString(Str(L"Line"), Str(L"second"));
    auto info = Create<IFileInfo>(L"FileInfo");
    info->put_Author(REFLiteral(L"tester"));
    info->put_Time(1234);
    ASSERT_GE(root->WriteObject(Str(L"Info"), info, 0), 0);
    ASSERT_GE(root->WriteString(Str(L"Last"), Str(L"")), 0);
}

bool StrayFiles(const fs::path& folder)
{
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string().rfind(".vxsave", 0) == 0)
            return true;
    return false;
}

} // namespace

TEST_F(FolderStreamTest, EveryKindReadsBackByNameAndPositionStoredOrDeflated)
{
    for (bool compress : {false, true}) {
        SCOPED_TRACE(compress ? "deflated" : "stored");
        TempFolder folder;
        auto written = Create<IFolderStream>(L"FolderStream");
        WriteSample(written);
        ASSERT_GE(Save(written, folder / "doc.tBL", compress), 0);

        auto root = Create<IFolderStream>(L"FolderStream");
        ASSERT_GE(ArchiveLoad(root, folder / "doc.tBL"), 0);
        EXPECT_EQ(ItemNames(root), kSampleNames);
        EXPECT_EQ(ReadText(root, L"Title"), kTitle);
        EXPECT_EQ(ReadText(root, L"Last"), L"");

        // A variant gets back the kind of value that was written.
        auto count = Variant(0), scale = Variant(0), title = Variant(0);
        root->ReadString(Str(L"Count"), count);
        root->ReadString(Str(L"Scale"), scale);
        root->ReadString(Str(L"Title"), title);
        EXPECT_EQ(count->get_Type(), VARIANT_INTEGER);
        EXPECT_EQ(count->get_Integer(), 42);
        EXPECT_EQ(scale->get_Type(), VARIANT_DOUBLE);
        EXPECT_EQ(scale->get_Double(), 2.5);
        EXPECT_TRUE(title->IsString());

        int32_t flags = 0;
        ASSERT_GE(root->ReadData(Str(L"Flags"), &flags, 4, 0), 0);
        EXPECT_EQ(flags, 0x1234);

        ASSERT_GE(root->OpenBlock(Str(L"Text")), 0);
        EXPECT_EQ(Buffer(root), "abcd");

        auto verse = Open(root, Str(L"Verse 1/2"));
        ASSERT_TRUE(verse);
        EXPECT_EQ(ReadText(verse, L"Line"), L"first");
        EXPECT_EQ(ReadText(Open(verse, Str(L"Deeper")), L"Line"), L"second");
        // Positions count folders only: the first is the verse, the second the object.
        EXPECT_EQ(ItemNames(Open(root, Variant(0))), (std::vector<std::wstring>{L"Line", L"Deeper"}));
        EXPECT_EQ(ItemNames(Open(root, Variant(1))), (std::vector<std::wstring>{L"Author", L"Time"}));
        EXPECT_FALSE(Open(root, Variant(2)));

        // The object is made anew by the component name that its folder remembers,
        // or an object given is loaded in place.
        SmartPtr<IUnknown> made;
        ASSERT_GE(root->ReadObject(Str(L"Info"), made.Receive(), 0), 0);
        EXPECT_EQ(Author(made), L"tester");
        auto given = Create<IFileInfo>(L"FileInfo");
        IUnknown* same = given.Copy();
        ASSERT_GE(root->ReadObject(Str(L"Info"), &same, 0), 0);
        EXPECT_TRUE(SameObject(same, given));
        same->Release();
        int64_t time = 0;
        given->get_Time(&time);
        EXPECT_EQ(time, 1234);
    }
}

TEST_F(FolderStreamTest, AMissingOrMismatchedItemFailsAndLeavesTheOutputAlone)
{
    auto root = Create<IFolderStream>(L"FolderStream");
    WriteSample(root);
    // folder: whether the read expects a folder
    struct Case { const wchar_t* name; bool folder; };
    const Case cases[] = {{L"Nothing", false}, {L"Nothing", true}, {L"Verse 1/2", false}, {L"Title", true}};
    for (const Case& c : cases) {
        SCOPED_TRACE(Narrow(c.name));
        if (c.folder) {
            SmartPtr<IDataStream> sub;
            EXPECT_LT(root->OpenFolder(Str(c.name), 0, sub.Receive()), 0);
            EXPECT_FALSE(sub);
            SmartPtr<IUnknown> object;
            EXPECT_LT(root->ReadObject(Str(c.name), object.Receive(), 0), 0);
            EXPECT_FALSE(object);
            continue;
        }
        int32_t data = 0xABCD;
        EXPECT_LT(root->ReadData(Str(c.name), &data, 4, 0), 0);
        EXPECT_EQ(data, 0xABCD);
        auto text = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
        text->Clone(REFLiteral(L"kept"));
        EXPECT_LT(root->ReadString(Str(c.name), text), 0);
        EXPECT_EQ(Text(text), L"kept");
        EXPECT_LT(root->OpenBlock(Str(c.name)), 0);
    }
}

TEST_F(FolderStreamTest, TheFolderIsACollectionAndANameWrittenAgainKeepsItsPlace)
{
    auto root = Create<IFolderStream>(L"FolderStream");
    WriteSample(root);
    auto collection = QueryAs<INamedCollection>(root.get());
    ASSERT_TRUE(collection);
    int index = -1;
    ASSERT_GE(collection->get_Index(Str(L"Verse 1/2"), &index), 0);
    EXPECT_EQ(index, 5);
    EXPECT_LT(collection->get_Index(Str(L"Verse"), &index), 0);

    // A folder's entry is its stream; a plain item's is its text and no folder.
    SmartPtr<IUnknown> item;
    ASSERT_GE(collection->get_Item(5, item.Receive()), 0);
    EXPECT_EQ(ReadText(Folder(item), L"Line"), L"first");
    ASSERT_GE(collection->get_Item(0, item.Receive()), 0);
    EXPECT_FALSE(Folder(item));
    EXPECT_EQ(Text(item), kTitle);
    EXPECT_LT(collection->get_Item(int(kSampleNames.size()), item.Receive()), 0);

    // Written again, as the same kind or as a folder, an item is replaced where it stands.
    root->WriteString(Str(L"Last"), Str(L"again"));
    SmartPtr<IDataStream> folder;
    root->CreateFolder(Str(L"Title"), 0, folder.Receive());
    EXPECT_EQ(ItemNames(root), kSampleNames);
    EXPECT_EQ(ReadText(root, L"Last"), L"again");
    EXPECT_TRUE(Open(root, Str(L"Title")));
}

// Writing a file fails beyond 16 KiB while this lives, as on a full disk (root passes every
// permission, but not this limit); the old limit and signal come back however the test ends.
struct SmallFileLimit {
    rlimit before{};
    void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    SmallFileLimit()
    {
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit small{16 * 1024, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFileLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
};

TEST_F(FolderStreamTest, AFailedSaveLeavesTheEarlierFileWhole)
{
    enum Trouble { FolderInTheWay, DiskFull, NoFolder };
    const std::pair<Trouble, const char*> cases[] = {{FolderInTheWay, "the target is a folder that is not empty"},
                                                     {DiskFull, "the disk refuses more bytes half-way"},
                                                     {NoFolder, "the folder does not exist"}};
    for (auto [trouble, what] : cases) {
        SCOPED_TRACE(what);
        TempFolder folder;
        auto stream = Create<IFolderStream>(L"FolderStream");
        WriteSample(stream);
        ASSERT_GE(Save(stream, folder / "earlier.tBL"), 0);
        const std::string earlier = ReadBytes(folder / "earlier.tBL");
        std::string big(256 * 1024, 'x');
        stream->WriteData(Str(L"Big"), big.data(), int(big.size()), 0);

        fs::path target = folder / (trouble == NoFolder ? "none/doc.tBL" : "doc.tBL");
        if (trouble == FolderInTheWay)
            fs::create_directories(target / "inside");
        std::optional<SmallFileLimit> limit;
        if (trouble == DiskFull) {
            fs::copy_file(folder / "earlier.tBL", target);
            limit.emplace();
        }
        int32_t result = Save(stream, target);
        limit.reset();
        EXPECT_LT(result, 0);
        EXPECT_FALSE(StrayFiles(folder.Path()));
        if (fs::is_regular_file(target)) {
            EXPECT_EQ(ReadBytes(target), earlier);
            auto reloaded = Create<IFolderStream>(L"FolderStream");
            ASSERT_GE(ArchiveLoad(reloaded, target), 0);
            EXPECT_EQ(ItemNames(reloaded), kSampleNames);
        }
    }
}

TEST_F(FolderStreamTest, ADamagedArchiveFailsAndLeavesTheTreeAsItWas)
{
    TempFolder folder;
    auto source = Create<IFolderStream>(L"FolderStream");
    source->WriteString(Str(L"Item-x"), Str(L"one"));
    source->WriteString(Str(L"Item-y"), Str(L"two"));
    source->WriteString(Str(L"Solo"), Str(L"four"));
    SmartPtr<IDataStream> sub;
    source->CreateFolder(Str(L"Fold"), 0, sub.Receive());
    Folder(sub)->WriteString(Str(L"Inner"), Str(L"three"));
    ASSERT_GE(Save(source, folder / "good.tBL"), 0);
    const std::string good = ReadBytes(folder / "good.tBL");

    auto replaceAll = [](std::string bytes, const std::string& from, const std::string& to) {
        for (size_t at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + to.size()))
            bytes.replace(at, from.size(), to);
        return bytes;
    };
    struct Case { const char* what; std::string bytes; };
    std::string flipped = good;
    flipped[flipped.find("two")] ^= 0x20;
    const Case cases[] = {
        {"empty", ""},
        {"first half", good.substr(0, good.size() / 2)},
        {"a content byte changed", flipped},
        {"two items of one name", replaceAll(good, "Item-y", "Item-x")},
        {"an item where a folder stands", replaceAll(good, "Fold", "Solo")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        WriteBytes(folder / "bad.tBL", c.bytes);
        auto stream = Create<IFolderStream>(L"FolderStream");
        stream->WriteString(Str(L"Keep"), Str(L"kept"));
        EXPECT_LT(ArchiveLoad(stream, folder / "bad.tBL"), 0);
        EXPECT_EQ(ItemNames(stream), std::vector<std::wstring>{L"Keep"});
    }
    auto stream = Create<IFolderStream>(L"FolderStream");
    EXPECT_GE(ArchiveLoad(stream, folder / "good.tBL"), 0);
}

TEST_F(FolderStreamTest, FileInfoNamesTheUserAndStampsTheSave)
{
    auto info = Create<IFileInfo>(L"FileInfo");
    EXPECT_FALSE(Author(info).empty());
    int64_t time = -1, before = int64_t(std::time(nullptr));
    info->get_Time(&time);
    EXPECT_EQ(time, 0);
    ASSERT_GE(Create<IFolderStream>(L"FolderStream")->WriteObject(Str(L"Info"), info, 0), 0);
    info->get_Time(&time);
    EXPECT_GE(time, before);
    EXPECT_LE(time, int64_t(std::time(nullptr)));
}

// A real is stored as the C++ library's shortest text for it would be, and reads back
// as the same double; the stream converts it without that library's help.
TEST_F(FolderStreamTest, RealsStoreAsTheirShortestTextAndReadBackExactly)
{
    std::vector<double> values = {0.0, -0.0, 1.0, -2.5, 0.1, 100.0, 1e21, 1e22, 123456789.0, 1234567890123456789.0,
                                  0.0001, 0.00001, 1.5e-7, 5e-324, 2.2250738585072014e-308, 1.7976931348623157e308,
                                  1.0 / 3.0, 9007199254740993.0, 4.35, 1e-10, 12345.678};
    std::srand(7);
    for (int i = 0; i < 3000; ++i) {
        uint64_t bits = (uint64_t(std::rand()) << 42) ^ (uint64_t(std::rand()) << 21) ^ uint64_t(std::rand());
        double value;
        std::memcpy(&value, &bits, sizeof(value));
        if (std::isfinite(value))
            values.push_back(value);
    }
    values.push_back(INFINITY);
    values.push_back(-INFINITY);
    auto root = Create<IFolderStream>(L"FolderStream");
    for (double value : values) {
        char expected[64];
        auto end = std::to_chars(expected, expected + sizeof(expected), value).ptr;
        ASSERT_GE(root->WriteString(Str(L"Real"), Variant(value)), 0);
        ASSERT_EQ(Narrow(ReadText(root, L"Real")), std::string(expected, end));
        auto back = Variant(0);
        root->ReadString(Str(L"Real"), back);
        // A value beyond a double's normal range is not read back as one (it stays text).
        if (std::fpclassify(value) == FP_SUBNORMAL)
            continue;
        ASSERT_EQ(back->get_Type(), VARIANT_DOUBLE) << expected;
        EXPECT_EQ(back->get_Double(), value) << expected;
    }
}
