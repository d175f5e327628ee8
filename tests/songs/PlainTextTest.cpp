// Plain song text: the most used text transformation of the system.
#include "songs/SongSupport.h"
#include "support/Collections.h"

namespace {

using namespace vxtest;

class PlainText : public SongTest {};

TEST_F(PlainText, Splitting)
{
    const std::wstring longLine = L"Amazing grace, how sweet the sound that saved a wretch like me";
    struct Case { const char* what; std::wstring text; std::vector<std::wstring> verses; } cases[] = {
        {"two verses", L"one\n\ntwo", {L"one", L"two"}},
        {"blank lines collapse, leading ones skipped", L"\n\n  \none\n\n\n\n two \n\n", {L"one", L"two"}},
        {"CR LF line ends", L"one\r\nline\r\n\r\ntwo\r\n", {L"one\r\nline", L"two"}},
        {"comment block dropped", L"a\n{note\nmore\n}\nd", {L"a", L"d"}},
        {"any line ending in a brace closes", L"a\n{ c\nfoo }\nb", {L"a", L"b"}},
        {"a brace closed on its own line stays open", L"{x}\nl1\n\nl2", {L"l1\n\nl2"}},
        {"an unclosed comment ends the song", L"a\n\n{ note\nmore", {L"a", L"more"}},
        {"a comment flushes what was gathered", L"a\nb\n{c\n}", {L"a\nb"}},
        {"one character", L"x", {L"x"}},
        {"only blanks", L" \n\t\n", {}},
        {"empty", L"", {}},
        {"long verse kept whole", longLine, {longLine}},
        // 239 and 254 are the stray first bytes of byte order marks read as Latin-1.
        {"stray mark bytes trimmed on the left only", L"\xEF\xFEone\xFE", {L"one\xFE"}},
    };
    auto song = NewSong();
    for (const Case& c : cases) {
        SetText(song, c.text);
        EXPECT_EQ(VersesOf(song).texts, c.verses) << c.what;
    }
    // Item names carry a preview of forty characters (a fresh song: a plain edit keeps old names).
    auto named = NewSong();
    SetText(named, L"one\n\n" + longLine);
    EXPECT_EQ(ItemNames(named), (std::vector<std::wstring>{L"Verse1 : one", L"Verse2 : " + longLine.substr(0, 40)}));
}

// Each verse knows its song and number; each holds its song, until the song is cleared.
TEST_F(PlainText, VersesKnowTheirSongAndClearingBreaksTheCycle)
{
    auto song = NewSong();
    SetText(song, L"a\n\nb\n\nc");
    {
        auto verse = VerseAt(song, 2);
        ASSERT_TRUE(verse);
        int number = -1;
        EXPECT_GT(verse->Inquire(VERSE_NUMBER, &number), 0) << "a positive flags word, not 0";
        EXPECT_EQ(number, 2);
        SmartPtr<IVXBook> source;
        ASSERT_EQ(verse->get_Source(source.Receive()), S_OK);
        EXPECT_TRUE(SameObject(source, song));
    }
    // Three references beyond the test's two.
    song->AddRef();
    EXPECT_EQ(song->Release(), 5);
    song.As<ISuperCollection>()->Clear();
    song->AddRef();
    EXPECT_EQ(song->Release(), 2);
}

} // namespace
