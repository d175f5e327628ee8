// The string collection: a text file cut into lines at a separator, and written
// back line for line in the encoding it came in.
#include <string>
#include <vector>

#include "support/Streams.h"
#include "support/TextBytes.h"

namespace {

using vxtest::Str;
using vxtest::Text;
using vxtest::Utf16;

class StringCollectionTest : public vxtest::ModuleTest {
protected:
    SmartPtr<IStringCollection> Open(const std::filesystem::path& file, int separator)
    {
        auto lines = vxtest::Create<IStringCollection>(L"StringCollection");
        EXPECT_TRUE(lines);
        if (!lines)
            return lines;
        lines->put_Separator(separator);
        m_LoadResult = vxtest::ArchiveLoad(lines, file);
        return lines;
    }

    static std::vector<std::wstring> Lines(IStringCollection* lines)
    {
        std::vector<std::wstring> out;
        int count = 0;
        lines->get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IUnknown> line;
            EXPECT_GE(lines->get_Item(i, line.Receive()), 0);
            EXPECT_TRUE(line.As<IString>()) << "line " << i << " is no string";
            out.push_back(Text(line));
        }
        return out;
    }

    vxtest::TempFolder m_Folder;
    int32_t m_LoadResult = E_FAIL;
};

TEST_F(StringCollectionTest, CutsAtTheSeparator)
{
    using L = std::vector<std::wstring>;
    struct Case { std::string bytes; int separator; L lines; };
    const Case cases[] = {
        {"one\r\ntwo\r\n\r\nfour", 13, {L"one", L"two", L"", L"four"}},
        {"one\rtwo\r", 13, {L"one", L"two"}},
        {"one\ntwo\r\n", 13, {L"one\ntwo"}}, // a lone LF is no break at CR
        {"a\r\nb\n", 10, {L"a", L"b"}},            // a CR LF pair is one break at LF too
        {"a\rb\n\n", 10, {L"a\rb", L""}},
        {"Caf\xC3\xA9;x", ';', {L"Caf\u00E9", L"x"}},
        {"\r\r", 13, {L"", L""}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes);
        auto file = m_Folder / "cut.txt";
        vxtest::WriteBytes(file, c.bytes);
        auto lines = Open(file, c.separator);
        ASSERT_TRUE(lines);
        EXPECT_GE(m_LoadResult, 0);
        EXPECT_EQ(Lines(lines), c.lines);
        // A file that is missing afterwards leaves no lines.
        EXPECT_LT(vxtest::ArchiveLoad(lines, m_Folder / "missing.txt"), 0);
        EXPECT_EQ(Lines(lines), std::vector<std::wstring>{});
    }
}

TEST_F(StringCollectionTest, RoundTripsCRLinesInUTF8AndUTF16)
{
    const std::vector<std::wstring> expected = {L"Genesis", L"1", L"", L"1. Im Anfang \u00FCber \u20AC"};
    std::wstring joined;
    for (const auto& line : expected)
        joined += line + L"\r\n";
    // Each file is written back exactly as it was read.
    const std::pair<std::string, int> cases[] = {
        {"Genesis\r\n1\r\n\r\n1. Im Anfang \xC3\xBC" "ber \xE2\x82\xAC\r\n", 8}, {Utf16(joined), 16}};
    for (const auto& [bytes, expectedEncoding] : cases) {
        SCOPED_TRACE(expectedEncoding);
        auto file = m_Folder / "book.txt";
        vxtest::WriteBytes(file, bytes);
        auto lines = Open(file, 13);
        ASSERT_TRUE(lines);
        EXPECT_EQ(Lines(lines), expected);
        auto archive = lines.As<IFileArchive>();
        int encoding = 0;
        archive->Inquire(ARCHIVE_ENCODING, &encoding);
        EXPECT_EQ(encoding, expectedEncoding);

        // Written back to another file, in the encoding it came in, and read again.
        auto copy = m_Folder / "copy.txt";
        EXPECT_GE(vxtest::ArchiveSave(lines, copy), 0);
        EXPECT_EQ(vxtest::ReadBytes(copy), bytes);
        EXPECT_EQ(Lines(Open(copy, 13)), expected);
    }
}

TEST_F(StringCollectionTest, NewLinesAreSavedAsUTF8)
{
    auto lines = vxtest::Create<ICreatableSimpleCollection>(L"StringCollection");
    ASSERT_TRUE(lines);
    lines->Add(Str(L"1:\tIm Anfang"));
    lines->Add(Str(L"2:\t\u00C4"));
    EXPECT_LT(lines->Add(nullptr), 0);
    SmartPtr<IUnknown> item;
    EXPECT_LT(lines->get_Item(2, item.Receive()), 0);
    EXPECT_LT(lines->get_Item(-1, item.Receive()), 0);
    auto file = m_Folder / "new.bbl";
    EXPECT_GE(vxtest::ArchiveSave(lines, file), 0);
    EXPECT_EQ(vxtest::ReadBytes(file), "1:\tIm Anfang\n2:\t\xC3\x84\n");
}

// Lines read from a file share its text: each changes alone, an empty one still
// ends in a terminator, and all outlive the collection and a reload of it.
TEST_F(StringCollectionTest, ReadLinesChangeAloneAndOutliveTheirCollection)
{
    auto file = m_Folder / "lines.txt";
    vxtest::WriteBytes(file, "alpha\r\n\r\ngamma\r\ndelta\r\n");
    auto lines = Open(file, 13);
    ASSERT_TRUE(lines);
    std::vector<SmartPtr<ICreatableString>> held;
    for (int i = 0; i < 4; ++i) {
        SmartPtr<IUnknown> line;
        lines->get_Item(i, line.Receive());
        held.push_back(line.As<ICreatableString>());
        ASSERT_TRUE(held.back());
    }
    wchar_t* buffer = nullptr;
    int length = -1;
    held[1]->GetBuffer(&buffer, &length);
    ASSERT_TRUE(buffer);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(buffer[0], L'\0');

    held[0]->Append(CREFString(L"+"));
    held[2]->Clone(CREFString(L"G"));
    held[1]->Append(CREFString(L"beta"));
    held[0]->Append(CREFString(L"!"));
    const std::vector<std::wstring> changed = {L"alpha+!", L"beta", L"G", L"delta"};
    EXPECT_EQ(Lines(lines), changed);
    auto copy = m_Folder / "copy.txt";
    EXPECT_GE(vxtest::ArchiveSave(lines, copy), 0);
    EXPECT_EQ(vxtest::ReadBytes(copy), "alpha+!\r\nbeta\r\nG\r\ndelta\r\n");

    // A reload and the collection's end leave the lines held elsewhere whole.
    vxtest::WriteBytes(file, "other\r\n");
    EXPECT_GE(vxtest::ArchiveLoad(lines, file), 0);
    EXPECT_EQ(Lines(lines), std::vector<std::wstring>{L"other"});
    lines = nullptr;
    for (size_t i = 0; i < held.size(); ++i)
        EXPECT_EQ(Text(SmartPtr<IUnknown>(held[i].get())), changed[i]);
}

} // namespace
