// A book to and from its own file and a packed translation's stream.
#include "bible/BookMaker.h"
#include "persistence/PropInterrogate.h"

using namespace vxtest;

namespace {

class BibleBookStore : public ModuleTest {};

std::wstring HeaderOf(IVXBook* book, int chapter, int verse)
{
    SmartPtr<IString> header;
    book->Header(header.Receive(), chapter, verse, 1, nullptr);
    return Text(header);
}

TEST_F(BibleBookStore, RoundTrips)
{
    const BookContent contents[] = {
        {L"Ruth", L"Ruth", L"KJV", L"Ruth 1\n1:\ta \u00e9\u20ac\n2:\tb\nRuth 2\n1:\tc\n"},
        {L"Jude", L"Jude", L"", L"Jude 1\r\n1:\ta\r\n2:\tb\r\n"},
    };
    for (const BookContent& content : contents) {
        auto book = MakeBook(content);
        // The stream form: names and text; the index is built again on reading.
        auto stream = Create<IFolderStream>(L"FolderStream");
        ASSERT_EQ(book.As<IDataPersist>()->Save(stream, 0), S_OK);
        auto copy = Create<IVXBook>(L"VXBibleBook");
        ASSERT_EQ(copy.As<IDataPersist>()->Load(stream, 0), S_OK);
        EXPECT_EQ(Narrow(HeaderOf(copy, 1, 0)), Narrow(HeaderOf(book, 1, 0)));
        EXPECT_EQ(Narrow(Verse(copy, 0, 1, 1)), Narrow(Verse(book, 0, 1, 1)));

        // The book's own file: the text as it was read, in UTF-16.
        TempFolder folder;
        std::wstring file = (folder / "book.bbl").wstring();
        auto archive = book.As<IFileArchive>();
        archive->put_Filename(Str(file));
        ASSERT_GE(archive->Save(), 0);
        auto reread = LoadBookFile(std::string(file.begin(), file.end()), content.nameInText);
        ASSERT_TRUE(reread);
        EXPECT_EQ(Verse(reread, 0, 0, 1), Verse(book, 0, 0, 1));
        EXPECT_EQ(ReadBytes(folder / "book.bbl").substr(0, 2), "\xff\xfe");
        // A book is read once.
        EXPECT_EQ(reread.As<IFileArchive>()->Load(), E_FAIL);
        EXPECT_EQ(Verse(reread, 0, 1, 1), Verse(book, 0, 1, 1));
    }
}

TEST_F(BibleBookStore, FailedAndEmptyReads)
{
    auto missing = Create<IVXBook>(L"VXBibleBook");
    auto archive = missing.As<IFileArchive>();
    archive->put_Filename(Str(L"/no/such/book.bbl"));
    EXPECT_LT(archive->Load(), 0);
    int chapters = -1;
    missing->get_ChapterCount(&chapters);
    EXPECT_EQ(chapters, 0);
    int loaded = -1;
    archive->Inquire(ARCHIVE_HASFILE, &loaded);
    EXPECT_EQ(loaded, 0) << "a failed read leaves the book unread";

    // A null stream counts as a read of an empty book.
    auto empty = Create<IVXBook>(L"VXBibleBook");
    EXPECT_EQ(empty.As<IDataPersist>()->Load(nullptr, 0), S_OK);
    empty.As<IFileArchive>()->Inquire(ARCHIVE_HASFILE, &loaded);
    EXPECT_EQ(loaded, 1);
    EXPECT_EQ(Verse(empty, 0, 0, 1), L"<fail>");

    // The written size counts; one that claims more than the block reads no further.
    struct Case {
        int32_t size;
        const wchar_t* text;
    } cases[] = {{5, L"Jude "}, {1 << 30, L"Jude 1\n1:\ta\n"}, {-3, L""}};
    for (const Case& c : cases) {
        auto stream = BookStream({L"Jude", L"Jude", L"", L"Jude 1\n1:\ta\n"});
        stream->WriteData(Str(L"Size"), &c.size, 4, 0);
        auto book = Create<IVXBook>(L"VXBibleBook");
        book.As<IDataPersist>()->Load(stream, 0);
        EXPECT_EQ(Text(book), c.text) << c.size;
    }
}

// A book's user name and translation are its properties, and its headers follow them.
TEST_F(BibleBookStore, NamesAreProperties)
{
    auto book = LoadBookFile(SamplePath("bible/Jonah.bbl"), L"Jonah");
    ASSERT_TRUE(book);
    auto properties = book.As<IUIPropInterrogateEx>();
    int count = 0;
    properties->Inquire(PROPERTY_COUNT, &count);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(properties->ControlEx(BOOK_PROP_USERNAME, Str(L"Jona")), S_OK);
    EXPECT_EQ(properties->ControlEx(BOOK_PROP_TRANSLATION, Str(L"KJV")), S_OK);
    SmartPtr<IUnknown> value;
    EXPECT_EQ(properties->InquireEx(BOOK_PROP_NAMEINTEXT, value.Receive()), PROPTYPE_STRING);
    EXPECT_EQ(Text(value), L"Jonah");
    EXPECT_EQ(Narrow(HeaderOf(book, 1, 2)), "Jona 2:3 [KJV]");
}

} // namespace
