// A song that a search of one attribute read first shows, by every road, what a
// song read whole shows: its verses are cut when something asks for them.
#include "songs/SongSupport.h"
#include "support/Streams.h"

namespace {

using namespace vxtest;

class SongSearchRead : public SongTest {};

std::wstring Joined(const std::vector<std::wstring>& parts)
{
    std::wstring all;
    for (const std::wstring& part : parts)
        all += part + L";";
    return all;
}
std::wstring Ids(IVXSong* song) { return Joined(VersesOf(song).ids); }

TEST_F(SongSearchRead, EveryRoadSeesWhatAWholeReadingGives)
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
                searched.As<IVXSearch>()->Find(Str(query), 0, nullptr);
                EXPECT_EQ(road.look(searched), road.look(whole)) << road.what << " after " << Narrow(query) << " in "
                                                                 << file.filename();
            }
}

TEST_F(SongSearchRead, UncutVersesAnswerAsCutOnes)
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
            EXPECT_EQ(searched.As<IVXSearch>()->Find(Str(query), 0, nullptr),
                      whole.As<IVXSearch>()->Find(Str(query), 0, nullptr))
                << Narrow(query) << " in " << texts[f];
        }
    }
}

} // namespace
