// A song text pasted from the CCLI service: title, named verses, and the credits.
#include "songs/SongSupport.h"

namespace {

using namespace vxtest;

class CCLIImport : public SongTest {};

struct Imported { SongVerses verses; Attributes attributes; std::wstring file; };

Imported Import(IVXSong* song, const std::wstring& paste, const std::wstring& file)
{
    auto archive = QueryAs<IFileArchive>(song);
    if (!file.empty())
        archive->put_Filename(Str(file));
    EXPECT_EQ(song->SetVerses(View(paste), SONGVERSES_CCLI), S_OK);
    SmartPtr<IString> name;
    archive->get_Filename(name.Receive());
    return {VersesOf(song), AttributesOf(song), Text(name)};
}

TEST_F(CCLIImport, PastesGoodAndDamaged)
{
    const std::wstring lost = L"\xFFFD 2001 Example Music";
    struct Case { const char* what; std::wstring paste; std::vector<std::wstring> ids; std::vector<std::wstring> texts;
        Attributes attributes; } cases[] = {
        {"title, one verse, an author", L"Morning Song\n\nVerse 1\nline one\nline two\n\nJane Doe\n",
         {L"Verse 1"}, {L"line one\nline two"}, {{L"title", L"Morning Song"}, {L"author", L"Jane Doe"}}},
        {"CR LF, a CCLI line before the author, a lost sign, a publisher and the info",
         L"  Morning Song \r\n\r\nVerse 1\r\na\r\n\r\nChorus\r\nb\r\nc\r\n\r\nCCLI Song # 123\r\nJane Doe\r\n" + lost +
             L"\r\nExample Publishing\r\nFor use solely with the SongSelect terms.\r\nCCLI License # 9",
         {L"Verse 1", L"Chorus"}, {L"a", L"b\r\nc"},
         {{L"title", L"Morning Song"}, {L"CCLIsong", L"CCLI Song # 123"}, {L"author", L"Jane Doe"},
          {L"copyright", lost}, {L"publisher", L"Example Publishing"},
          {L"info", L"For use solely with the SongSelect terms.\r\nCCLI License # 9"}}},
        {"the sign itself makes no copyright line", L"T\n\nV\nx\n\nA\n\xA9 2001 Someone\nrest",
         {L"V"}, {L"x"}, {{L"title", L"T"}, {L"author", L"A"}, {L"publisher", L"\xA9 2001 Someone"}, {L"info", L"rest"}}},
        {"a CCLI line after the author", L"T\n\nV\nx\n\nA\nccli song 5", {L"V"}, {L"x"},
         {{L"title", L"T"}, {L"author", L"A"}, {L"CCLIsong", L"ccli song 5"}}},
        {"no credits: the last verse is taken for them", L"T\n\nV1\nx\n\nV2\ny", {L"V1"}, {L"x"},
         {{L"title", L"T"}, {L"author", L"V2"}, {L"publisher", L"y"}, {L"info", L""}}},
        {"no blank line behind the title: all is credits", L"T\nV1\nx", {}, {},
         {{L"title", L"T"}, {L"author", L"V1"}, {L"publisher", L"x"}, {L"info", L""}}},
        {"a heading with no lines takes the rest", L"T\n\nV1\n\nx\ny\n\nA", {L"V1", L"x"}, {L"x\ny\n\nA", L"y"},
         {{L"title", L"T"}, {L"author", L"A"}}},
        {"only blank lines", L" \n\n\t\r\n", {}, {}, {}},
        {"empty", L"", {}, {}, {}},
        {"only a title", L"Just a title", {}, {}, {{L"title", L"Just a title"}}},
    };
    for (const Case& c : cases) {
        auto song = NewSong();
        Imported got = Import(song, c.paste, L"");
        EXPECT_EQ(got.verses.ids, c.ids) << c.what;
        EXPECT_EQ(got.verses.texts, c.texts) << c.what;
        EXPECT_EQ(got.attributes, c.attributes) << c.what;
        EXPECT_EQ(got.file, L"") << c.what << ": no name is made without one";
    }
}

TEST_F(CCLIImport, FileNameComesFromTheTitle)
{
    struct Case { std::wstring old; std::wstring title; std::wstring expected; } cases[] = {
        {L"/songs/in/new.sng", L"Morning, Song #2!", L"/songs/in/MorningSong2.sng"},
        {L"/songs/x.txt", L"?? !!", L"/songs/.sng"},
        {L"x.sng", L"\xC0 toi", L"/toi.sng"},
        {L"/x.sng", L"A b", L"/Ab.sng"},
    };
    for (const Case& c : cases) {
        auto song = NewSong();
        Imported got = Import(song, c.title + L"\n\nV\nx\n\nA", c.old);
        EXPECT_EQ(got.file, c.expected) << Narrow(c.old);
        // The import is an edit, not yet saved under its new name.
        EXPECT_EQ(ArchiveFlag(song, ARCHIVE_MODIFIED), 1);
    }
}

TEST_F(CCLIImport, AttributesStayVersesGo)
{
    auto song = NewSong();
    SetText(song, L"old\n\nverses");
    song.As<IParameters>().As<IParametersCreatable>()->Add(Str(L"Title"), Str(L"Old"), nullptr, 0);
    Imported got = Import(song, L"New\n\nV\nx\n\nA", L"");
    // "title" and "Title" are one attribute: the stored spelling stays.
    EXPECT_EQ(got.attributes, (Attributes{{L"Title", L"New"}, {L"author", L"A"}}));
    EXPECT_EQ(got.verses.texts, std::vector<std::wstring>{L"x"});
}

} // namespace
