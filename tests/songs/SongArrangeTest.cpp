// Arrange: a whole song broken anew to a width of line and a length of verse.
#include "songs/SongSupport.h"

namespace {

using namespace vxtest;

class SongArrange : public SongTest {};

const wchar_t kGrace[] = L"Amazing grace! How sweet the sound\nThat saved a wretch like me!\n"
                         L"I once was lost, but now am found;\nWas blind, but now I see.";

TEST_F(SongArrange, BreaksLinesAndVerses)
{
    struct Case { const char* what; std::wstring text; int lines, chars; std::vector<std::wstring> verses; } cases[] = {
        {"wide limits add a blank at each line end and nothing else",
         std::wstring(kGrace) + L"\n\n'Twas grace that taught\nmy heart to fear", 100, 100,
         {L"Amazing grace! How sweet the sound \r\nThat saved a wretch like me! \r\n"
          L"I once was lost, but now am found; \r\nWas blind, but now I see.",
          L"'Twas grace that taught \r\nmy heart to fear"}},
        {"a verse of five lines cut by two", L"Holy\nholy\nholy\nLord God\nAlmighty", 2, 100,
         {L"Holy \r\nholy", L"holy \r\nLord God", L"Almighty"}},
        {"words of four break after the second at ten", L"amen amen amen", 0, 10, {L"amen amen \r\namen"}},
        {"a limit smaller than any word puts each word alone, whole", L"Abide with me", 0, 3,
         {L"Abide \r\nwith \r\nme"}},
        {"a word of the full width at a line's start costs a line", L"abcde\nx\ny", 2, 5, {L"abcde", L"x \r\ny"}},
        {"a line too long splits the verse when the lines run out", kGrace, 3, 25,
         {L"Amazing grace! How sweet \r\nthe sound \r\nThat saved a wretch like", L"me! \r\nI once was lost, but now \r\nam found;",
          L"Was blind, but now I see."}},
        {"blank lines between verses count the lines anew, several are one", L"one\ntwo\n\n\n\nthree\nfour", 2, 100,
         {L"one \r\ntwo", L"three \r\nfour"}},
        {"a next line opening with punctuation glues the words of this one",
         L"Through many dangers, toils and snares\nI have already come;\n'Tis grace hath brought me safe", 0, 100,
         {L"Through many dangers, toils and snares \r\nIhavealreadycome;\r\n'Tis grace hath brought me safe"}},
        {"blanks inside a line are one", L"Lord,   have  mercy", 0, 100, {L"Lord, have mercy"}},
        {"an empty song stays empty", L"", 3, 10, {}},
    };
    for (const Case& c : cases) {
        auto song = NewSong();
        SetText(song, c.text);
        EXPECT_EQ(song->Arrange(c.lines, c.chars), S_OK) << c.what;
        EXPECT_EQ(VersesOf(song).texts, c.verses) << c.what;
    }
}

TEST_F(SongArrange, NamesStayByPositionSwitchesAreNew)
{
    auto song = NewSong();
    SetText(song, L"<verses><verse id=\"Chorus\">Praise God from whom\nall blessings flow</verse>"
                  L"<verse id=\"Amen\">Amen</verse></verses>");
    VerseAt(song, 0)->Control(VERSE_HEADERDISPLAY, DISPLAY_FIRST);

    EXPECT_EQ(song->Arrange(1, 100), S_OK);
    // Old names go back by position, previews and all; a verse beyond them is numbered.
    EXPECT_EQ(ItemNames(song), (std::vector<std::wstring>{L"Chorus : Praise God from whom\nall blessings flow",
                                                          L"Amen : Amen", L"Verse3 : Amen"}));
    EXPECT_EQ(VersesOf(song).texts,
              (std::vector<std::wstring>{L"Praise God from whom", L"all blessings flow", L"Amen"}));
    // The verses are new objects: each has the switches a new verse has.
    int display = -1;
    VerseAt(song, 0)->Inquire(VERSE_HEADERDISPLAY, &display);
    EXPECT_EQ(display, DISPLAY_NEVER);
}

} // namespace
