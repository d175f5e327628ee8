// XML files read as parameters and as a stream, and the books an XML Bible is made of.
#include <string>
#include <vector>

#include "support/Collections.h"
#include "support/Streams.h"

using namespace vxtest;

namespace {

// The parameters as one line: name, {descriptor}, @ for an attribute entry, and
// [nested entries] or ="text".
std::wstring Dump(IParameters* entries)
{
    std::wstring out;
    for (int i = 0; i < Count(entries); ++i) {
        SmartPtr<IString> name;
        entries->get_ItemName(i, name.Receive());
        int flags = 0;
        entries->get_ItemFlags(i, &flags);
        out += (i ? L" " : L"") + std::wstring(flags & PARAMETER_XMLATTRIBUTE ? L"@" : L"") + Text(name);
        SmartPtr<IUnknown> descriptor;
        if (entries->get_ItemDescriptor(i, descriptor.Receive()) >= 0)
            out += L"{" + Dump(descriptor.As<IParameters>()) + L"}";
        SmartPtr<IUnknown> item;
        entries->get_Item(i, item.Receive());
        if (auto nested = item.As<IParameters>())
            out += L"[" + Dump(nested) + L"]";
        else
            out += L"=\"" + Text(item) + L"\"";
    }
    return out;
}

class XMLFileTest : public ModuleTest {
protected:
    SmartPtr<IFileArchive> Load(const std::string& bytes, int32_t* result = nullptr)
    {
        WriteBytes(m_Folder / "bible.xml", bytes);
        auto file = Create<IFileArchive>(L"XMLFile");
        int32_t loaded = ArchiveLoad(file, m_Folder / "bible.xml");
        if (result)
            *result = loaded;
        return file;
    }

    TempFolder m_Folder;
};

TEST_F(XMLFileTest, EntriesAreTheChildrenOfTheTopElement)
{
    struct Case { const char* file; const wchar_t* entries; } cases[] = {
        {"<?xml version=\"1.0\"?><Bible><Book name=\"Jude\"><Chapter><Verse>Jude, a servant</Verse></Chapter></Book>"
         "</Bible>",
         L"Book{name=\"Jude\"}[@name=\"Jude\" Chapter[Verse=\"Jude, a servant\"]]"},
        // Attribute values and texts lose their references; quotes of either kind.
        {"<B><Book name='A &amp; B' n=2><V>x &lt; y</V></Book></B>",
         L"Book{name=\"A & B\" n=\"2\"}[@name=\"A & B\" @n=\"2\" V=\"x < y\"]"},
        // Empty elements, and a top element of no children.
        {"<B><Book name=\"Obadiah\"/><Book></Book></B>", L"Book{name=\"Obadiah\"}=\"\" Book=\"\""},
        {"<B/>", L""},
        // An element left open is taken as empty; the reader goes on behind it.
        {"<B><Book name=\"X\"><V>one<V>two</V></Book></B>", L"Book{name=\"X\"}[@name=\"X\" V=\"\" V=\"two\"]"},
        // UTF-8 text, as the file reader decodes it.
        {"<B><V>caf\xC3\xA9</V></B>", L"V=\"caf\u00e9\""},
    };
    for (const Case& c : cases) {
        int32_t result = E_FAIL;
        auto file = Load(c.file, &result);
        ASSERT_EQ(result, S_OK) << c.file;
        auto parameters = file.As<IParameters>();
        ASSERT_TRUE(parameters) << c.file;
        EXPECT_EQ(Dump(parameters), c.entries) << c.file;
    }
}

TEST_F(XMLFileTest, StreamReadsTheSameTextAndAMissingFileNothing)
{
    auto file = Load("<?xml version=\"1.0\"?><Bible><Title>KJV</Title></Bible>");
    SmartPtr<IXMLStream> stream;
    ASSERT_EQ(file.As<IXMLFile>()->get_Stream(stream.Receive()), S_OK);
    EXPECT_TRUE(SameObject(stream, file.As<IXMLStream>()));
    SmartPtr<IUnknown> bible, title;
    tagREFString value{0, nullptr};
    ASSERT_EQ(stream->GetAttribute(REFLiteral(L"Bible"), &value, bible.Receive(), 1), S_OK);
    ASSERT_EQ(bible.As<IXMLStream>()->GetAttribute(REFLiteral(L"Title"), &value, title.Receive(), 1), S_OK);
    EXPECT_EQ(Text(title), L"KJV");

    auto missing = Create<IFileArchive>(L"XMLFile");
    EXPECT_LT(ArchiveLoad(missing, m_Folder / "none.xml"), 0);
    EXPECT_FALSE(missing.As<IParameters>());
    EXPECT_LT(missing.As<IXMLFile>()->get_Stream(stream.Receive()), 0);
}

// A book loaded from the parameters of one Book entry.
SmartPtr<IVXBook> BookOf(IParameters* bible, int entry)
{
    SmartPtr<IUnknown> item;
    bible->get_Item(entry, item.Receive());
    auto book = Create<IVXBook>(L"VXBook");
    EXPECT_TRUE(book);
    EXPECT_EQ(book.As<IVXBookEx>()->Load(item.As<IParameters>()), S_OK);
    return book;
}

TEST_F(XMLFileTest, BookAnswersVersesAndHeaders)
{
    auto file = Load("<Bible>"
                     "<Book name=\"Acts\"><Chapter><V>a1</V><V>a2</V></Chapter>"
                     "<Chapter><V>b1</V><V>b2</V><V>b3</V></Chapter></Book>"
                     "<Book name=\"Jude\"><V>j1</V><V>j2</V></Book>"
                     "</Bible>");
    auto parameters = file.As<IParameters>();
    ASSERT_TRUE(parameters);
    SmartPtr<IVXBook> books[] = {BookOf(parameters, 0), BookOf(parameters, 1)};

    struct Case { int book, chapter, verse, count; int32_t result; const wchar_t* verses;
        const wchar_t* header; } cases[] = {
        {0, 1, 1, 1, S_OK, L"2:\tb2", L"Acts 2:2"},
        {0, 1, 0, 2, S_OK, L"1:\tb1\r\n2:\tb2", L"Acts 2:1-2"},
        {0, 1, 1, BIBLE_VERSES_TO_END, S_OK, L"2:\tb2\r\n3:\tb3", L"Acts 2:2-"},
        {0, 0, -1, 1, E_FAIL, L"", L"Acts 1"},
        {0, 2, 0, 1, E_FAIL, L"", L"Acts 3:1"},
        {0, 0, 2, 1, E_FAIL, L"", L"Acts 1:3"},
        {0, -1, 0, 1, E_FAIL, L"", L"Acts"},
        // A book of verses alone is one chapter, cited by its verses.
        {1, 0, 1, 1, S_OK, L"2:\tj2", L"Jude 2"},
        {1, 0, 0, 3, S_OK, L"1:\tj1\r\n2:\tj2", L"Jude 1-3"},
        {1, 0, -1, 1, E_FAIL, L"", L"Jude "},
    };
    for (const Case& c : cases) {
        IVXBook* book = books[c.book];
        SmartPtr<IString> verses;
        EXPECT_EQ(book->get_Verse(c.chapter, c.verse, c.count, verses.Receive()), c.result) << c.header;
        EXPECT_EQ(Text(verses), c.verses) << c.header;
        SmartPtr<IString> header;
        ASSERT_EQ(book->Header(header.Receive(), c.chapter, c.verse, c.count, nullptr), S_OK);
        EXPECT_EQ(Text(header), c.header);
    }
    int chapters = 0, verses = 0;
    books[0]->get_ChapterCount(&chapters);
    EXPECT_EQ(chapters, 2);
    EXPECT_EQ(books[0]->get_VerseCount(1, &verses), S_OK);
    EXPECT_EQ(verses, 3);
    EXPECT_LT(books[0]->get_VerseCount(2, &verses), 0);
    SmartPtr<IString> footer;
    EXPECT_EQ(books[1]->Footer(footer.Receive(), 0, 0, 1, nullptr), E_NOTIMPL);
}

} // namespace
