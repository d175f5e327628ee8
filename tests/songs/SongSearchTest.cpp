// The song list's question to each song: does it match what the user typed? And what a
// search reads of a song's file.
#include <clocale>

#include "songs/SongSupport.h"
#include "support/Streams.h"

namespace {

using namespace vxtest;

class SongSearch : public SongTest {
protected:
    SmartPtr<IVXSong> Hymn()
    {
        auto song = NewSong();
        SetText(song, L"Amazing grace! how sweet the sound\nThat saved a wretch like me!\n\n"
                      L"Through many dangers, toils and snares\nI have already come\n\n"
                      L"aaab bbbbc Noël café title= Ā");
        auto attributes = song.As<IParameters>().As<IParametersCreatable>();
        for (auto [name, value] : {std::pair{L"Title", L"Amazing Grace"}, {L"Author", L"John Newton"},
                                   {L"ccli_number", L"22025"}, {L"Category", L"Hymn"}, {L"Comments", L"slow"},
                                   {L"Key", L"G"}, {L"Copyright", L"Public Domain"}, {L"Tempo", L"Slow"},
                                   {L"CCLIsong", L"CCLI Song # 7000002"}})
            attributes->Add(Str(name), Str(value), nullptr, 0);
        return song;
    }
    static int32_t Find(IVXSong* song, const wchar_t* query)
    {
        return QueryAs<IVXSearch>(song)->Find(query ? Str(query).get() : nullptr, 0, nullptr);
    }
};

TEST_F(SongSearch, QueriesOfEachKind)
{
    // Folding is the C locale's, whatever the process had before.
    std::string before = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_CTYPE, "C");
    auto song = Hymn();
    const struct { const wchar_t* query; int32_t result; } cases[] = {
        {nullptr, E_FAIL}, {L"", E_FAIL}, {L"GRACE", S_OK}, {L"wretch like me!", S_OK},
        {L"come\nThrough", E_FAIL}, // verses are searched one by one
        {L"John", E_FAIL}, {L"Verse1", E_FAIL}, // a plain text looks at the verses only, not at their names
        // One pass: a partial match restarts at the character that broke it.
        {L"aab", E_FAIL}, {L"aaab", S_OK}, {L"ab", S_OK},
        {L"bbc", S_OK}, // found behind a failed try that began at the haystack's start
        // Accents fold only as far as the C locale's tolower reaches.
        {L"noël", S_OK}, {L"NOËL", E_FAIL}, {L"CAFÉ", E_FAIL}, {L"ā", E_FAIL}, {L"Ā", S_OK},
        {L"#", E_FAIL}, {L"#2202", S_OK}, {L"#99", E_FAIL},
        {L"# 2202", E_FAIL}, // the number's query is not trimmed
        {L"#7000002", E_FAIL}, {L"CCLIsong=7000002", S_OK}, // "#" looks at ccli_number, not at an import's CCLIsong
        {L"title=", S_OK},   // a trailing "=" is text like any other
        {L"key=", E_FAIL}, {L"=Newton", E_FAIL}, {L"ART = newton", S_OK}, {L"Artist=NEWTON", S_OK},
        {L"auth=john", S_OK}, {L"author=Newton", S_OK},
        {L"authority=Newton", E_FAIL}, // a word that begins like a field word stands for itself
        {L"ccli number=2025", S_OK}, {L"CCLI=25", S_OK}, {L"ccli_number=9", E_FAIL}, {L"cat=hymn", S_OK},
        {L"comm=SLOW", S_OK}, {L"key=g", S_OK}, {L"copyright=domain", S_OK}, {L"title=grace", S_OK},
        {L"title=   ", E_FAIL}, // nothing left of the value
        {L"tempo=sl", S_OK},   // any attribute by its own name
        {L"Tempo=fast", E_FAIL}, {L"publisher=x", E_FAIL},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Find(song, c.query), c.result) << Narrow(c.query ? c.query : L"(null)");
    std::setlocale(LC_CTYPE, before.c_str());
}

TEST_F(SongSearch, ReadsTheFileOnFirstSearchOnly)
{
    TempFolder folder;
    const auto file = folder / "hymn.txt";
    WriteBytes(file, "Abide with me; fast falls the eventide\n\nSwift to its close ebbs out life's little day\n");
    auto song = NewSong();
    song.As<IFileArchive>()->put_Filename(Str(file.wstring()));
    EXPECT_EQ(Find(song, L"EVENTIDE"), S_OK);
    EXPECT_EQ(VersesOf(song).texts.size(), 2u);
    // Loaded once: a file changed afterwards is not read again.
    WriteBytes(file, "Other words\n");
    EXPECT_EQ(Find(song, L"little day"), S_OK);
    EXPECT_EQ(Find(song, L"other"), E_FAIL);
    // A song without verses matches no text.
    EXPECT_EQ(Find(NewSong(), L"a"), E_FAIL);
}

// A song that a search of one attribute read first shows, by every road, what a
// song read whole shows: its verses are cut when something asks for them.
std::wstring Joined(const std::vector<std::wstring>& parts)
{
    std::wstring all;
    for (const std::wstring& part : parts)
        all += part + L";";
    return all;
}
std::wstring Ids(IVXSong* song) { return Joined(VersesOf(song).ids); }

TEST_F(SongSearch, EveryRoadSeesWhatAWholeReadingGives)
{
    TempFolder folder;
    const auto plain = folder / "plain.txt";
    WriteBytes(plain, "One\nline\n\n{a comment}\nTwo\n\nThree\n");
    const std::filesystem::path files[] = {std::string(VX_SOURCE_DIR) + "/samples/songs/amazing-grace.sng", plain};
    struct Road {
        const char* what;
        std::function<std::wstring(IVXSong*)> look;
    } roads[] = {
        {"verses", [](IVXSong* s) { return Ids(s) + Joined(VersesOf(s).texts); }},
        {"file text and flag",
         [](IVXSong* s) { return SongText(s, 7) + std::to_wstring(ArchiveFlag(s, ARCHIVE_MODIFIED)); }},
        {"plain edit keeps the names by position", [](IVXSong* s) {
             SetText(s, L"A\n\nB\n\nC\n\nD\n\nE");
             return Ids(s) + std::to_wstring(ArchiveFlag(s, ARCHIVE_MODIFIED));
         }},
        {"attribute set first", [](IVXSong* s) {
             QueryAs<IParameters>(s).As<IParametersCreatable>()->Add(Str(L"Key"), Str(L"G"), nullptr, 0);
             return SongText(s, 7) + std::to_wstring(ArchiveFlag(s, ARCHIVE_MODIFIED));
         }},
        {"cleared", [](IVXSong* s) {
             QueryAs<ISuperCollection>(s)->Clear();
             return SongText(s, 7);
         }},
        {"unloaded and read again", [](IVXSong* s) {
             QueryAs<IFileArchive>(s)->Unload();
             QueryAs<IFileArchive>(s)->Load();
             return Ids(s);
         }},
        {"verse by name", [](IVXSong* s) {
             int index = -1;
             QueryAs<ISuperCollection>(s)->get_Index(Str(L"Verse2"), &index);
             return std::to_wstring(index);
         }},
        {"verse search", [](IVXSong* s) {
             auto search = QueryAs<IVXSearch>(s);
             return std::to_wstring(search->Find(Str(L"GRACE"), 0, nullptr)) +
                    std::to_wstring(search->Find(Str(L"two"), 0, nullptr));
         }},
        {"owner set later hears only later changes", [](IVXSong* s) {
             SmartPtr<_IUIRefreshEvent> owner;
             IID iid = IID__IUIRefreshEvent;
             CObject<CRefreshProbe>::_CreateInstance(nullptr, &iid, owner.ReceiveVoid());
             QueryAs<IParent>(s)->put_Parent(owner);
             SetText(s, L"x\n\ny");
             QueryAs<IParent>(s)->put_Parent(nullptr);
             return std::to_wstring(static_cast<CRefreshProbe*>(owner.get())->m_Count);
         }},
    };
    for (const auto& file : files)
        for (const wchar_t* query : {L"author=nobody", L"#1", L"copyright = public", L"grace", L""})
            for (const Road& road : roads) {
                auto whole = NewSong();
                ASSERT_EQ(ArchiveLoad(whole, file), S_OK);
                auto searched = NewSong();
                searched.As<IFileArchive>()->put_Filename(Str(file.wstring()));
                Find(searched, query);
                EXPECT_EQ(road.look(searched), road.look(whole)) << road.what << " after " << Narrow(query) << " in "
                                                                 << file.filename();
            }
}

TEST_F(SongSearch, UncutVersesAnswerAsCutOnes)
{
    TempFolder folder;
    const std::string texts[] = {
        "aaab line\n\n   padded  \n\n{a comment}\nlast one\n",
        "<attributes><author>John Newton</author></attributes>\n<verses><verse id=\"a\"> first </verse>"
        "<verse id=\"b\">  </verse><verse id=\"c\">second</verse></verses>",
        "<verse id=\"x\">bare one</verse>\n<verse>bare two</verse>",
    };
    const wchar_t* queries[] = {L"aab",  L"aaab", L"padded", L"  padded", L"line\n\n   pad", L"comment", L"LAST",
                                L"newton", L"first", L"first </verse>", L"bare two", L"verse", L"title=", L"="};
    for (size_t f = 0; f < std::size(texts); ++f) {
        const auto file = folder / ("song" + std::to_string(f) + ".txt");
        WriteBytes(file, texts[f]);
        auto whole = NewSong();
        ASSERT_EQ(ArchiveLoad(whole, file), S_OK);
        for (const wchar_t* query : queries) {
            auto searched = NewSong();
            searched.As<IFileArchive>()->put_Filename(Str(file.wstring()));
            EXPECT_EQ(Find(searched, query), Find(whole, query)) << Narrow(query) << " in " << texts[f];
        }
    }
}

} // namespace
