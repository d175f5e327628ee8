// Header and Footer: the bands above and below a verse, by the verse's switches,
// its display rules, and the licence in the installation's registry.
#include "songs/SongSupport.h"
#include "support/ScopedRegistry.h"

namespace {

using namespace vxtest;

class SongBands : public SongTest {
protected:
    // Three verses, the middle one a chorus, with the given attributes.
    SmartPtr<IVXSong> Song(const Attributes& attributes)
    {
        auto song = NewSong();
        SetText(song, L"<verses><verse>Amazing grace</verse><verse id=\"My Chorus\">How sweet</verse>"
                      L"<verse>I once was lost</verse></verses>");
        for (const auto& [name, value] : attributes)
            song.As<IParameters>().As<IParametersCreatable>()->Add(Str(name), Str(value), nullptr, 0);
        return song;
    }
    static SmartPtr<IVXSongVerse> Verse(IVXSong* song, int index, std::initializer_list<std::pair<int, int>> switches)
    {
        auto verse = VerseAt(song, index);
        for (auto [code, value] : switches)
            verse->Control(code, value);
        return verse;
    }
    // The band's text, or "E_FAIL".
    static std::wstring Band(IVXSong* song, bool header, int chapter, int verse, IUnknown* object)
    {
        SmartPtr<IString> out;
        auto book = QueryAs<IVXBook>(song);
        int32_t result = header ? book->Header(out.Receive(), chapter, verse, 1, object)
                                : book->Footer(out.Receive(), chapter, verse, 1, object);
        if (result == E_FAIL) {
            EXPECT_FALSE(out);
            return L"E_FAIL";
        }
        EXPECT_EQ(result, S_OK);
        return Text(out);
    }
    const Attributes m_Grace = {{L"Title", L"Amazing Grace"}, {L"Author", L"John Newton"},
                                {L"Copyright", L"Public Domain"}};
};

TEST_F(SongBands, DisplayRulesOnFirstMiddleAndLastVerse)
{
    TempFolder folder;
    WriteBytes(folder / "registry.ini", "[Vexilon]\nCCLI=1234567\n");
    ScopedRegistry registry(folder / "registry.ini");
    auto song = Song(m_Grace);
    const std::wstring heads[] = {L"Amazing Grace: Verse1", L"Amazing Grace: MyChorus", L"Amazing Grace: Verse3"};
    const std::wstring foot = L"CCLI# 1234567; Amazing Grace; John Newton; Public Domain";
    const bool shownAt[4][3] = {{false, false, false}, {true, false, false}, {false, false, true}, {true, true, true}};
    for (int display : {DISPLAY_NEVER, DISPLAY_FIRST, DISPLAY_LAST, DISPLAY_ALL}) {
        for (int i = 0; i < 3; ++i) {
            auto verse = Verse(song, i,
                               {{VERSE_SHOWTITLE, 1}, {VERSE_SHOWVERSENAME, 1}, {VERSE_HEADERDISPLAY, display},
                                {VERSE_SHOWCCLI, 1}, {VERSE_SHOWFOOTTITLE, 1}, {VERSE_SHOWAUTHOR, 1},
                                {VERSE_FOOTERDISPLAY, display}});
            bool shown = shownAt[display][i];
            EXPECT_EQ(Band(song, true, 0, i, verse), shown ? heads[i] : L"E_FAIL") << display << " " << i;
            EXPECT_EQ(Band(song, false, 0, i, verse), shown ? foot : L"E_FAIL") << display << " " << i;
        }
    }
}

// Each band from its parts; the song's file is how-great-thou-art.sng.
TEST_F(SongBands, PartsOfEachBand)
{
    TempFolder folder;
    const auto registryFile = folder / "registry.ini";
    enum { Footer, Header };
    // Without switches no verse is shown; a null registry: no registry file.
    const struct { const char* what; int band; const char* registry; Attributes attributes; int chapter, verse;
        std::initializer_list<std::pair<int, int>> switches; std::wstring expected; } cases[] = {
        {"no verse and no index: the title alone", Header, nullptr, m_Grace, 0, -1, {}, L"Amazing Grace"},
        {"no verse: title and name", Header, nullptr, m_Grace, 0, 1, {}, L"Amazing Grace: MyChorus"},
        {"no title: the file's name", Header, nullptr, {}, 0, 0, {}, L"how-great-thou-art: Verse1"},
        {"a title of blanks: the file's name", Header, nullptr, {{L"title", L" \t "}}, 0, -1, {},
         L"how-great-thou-art"},
        {"leading blanks of a title stay", Header, nullptr, {{L"Title", L"  Grace"}}, 0, -1, {}, L"  Grace"},
        {"short form: eleven letters", Header, nullptr, {{L"Title", L"Abcdefghijklmnopqrst"}}, HEADER_SHORT, -1, {},
         L"Abcdefghijk"},
        {"short form drops blanks and punctuation", Header, nullptr, {{L"Title", L"It's: Well, my soul!"}},
         HEADER_SHORT, -1, {}, L"ItsWellmyso"},
        {"a separator though the short form kept nothing", Header, nullptr, {{L"Title", L"!!!"}}, HEADER_SHORT, 2, {},
         L": Verse3"},
        {"name alone, without its blank", Header, nullptr, m_Grace, 0, 1,
         {{VERSE_SHOWVERSENAME, 1}, {VERSE_HEADERDISPLAY, DISPLAY_ALL}}, L"MyChorus"},
        {"title alone", Header, nullptr, m_Grace, 0, 1, {{VERSE_SHOWTITLE, 1}, {VERSE_HEADERDISPLAY, DISPLAY_ALL}},
         L"Amazing Grace"},
        {"neither: an empty header", Header, nullptr, m_Grace, 0, 1, {{VERSE_HEADERDISPLAY, DISPLAY_ALL}}, L""},
        {"a new verse has no header", Header, nullptr, m_Grace, 0, 0, {{VERSE_SHOWTITLE, 0}}, L"E_FAIL"},
        {"no name where the index is past the end", Header, nullptr, m_Grace, 0, 7, {}, L"Amazing Grace"},
        {"no verse: no footer", Footer, "[Vexilon]\nCCLI=99\n", m_Grace, 0, 1, {}, L"E_FAIL"},
        {"a new verse shows the copyright on every verse", Footer, nullptr, m_Grace, 0, 1, {{VERSE_NUMBER, 1}},
         L"Public Domain"},
        {"a new verse on a song without copyright", Footer, nullptr, {{L"Title", L"x"}}, 0, 1, {{VERSE_NUMBER, 1}},
         L"E_FAIL"},
        {"the licence alone", Footer, "[Vexilon]\nCCLI=99\n", {}, 0, 1, {{VERSE_SHOWCCLI, 1}}, L"CCLI# 99"},
        {"a licence of blanks drops out with its separator", Footer, "[Vexilon]\nCCLI=   \n", m_Grace, 0, 1,
         {{VERSE_SHOWCCLI, 1}, {VERSE_SHOWFOOTTITLE, 1}, {VERSE_SHOWAUTHOR, 1}},
         L"Amazing Grace; John Newton; Public Domain"},
        {"no registry file: no licence", Footer, nullptr, m_Grace, 0, 1,
         {{VERSE_SHOWCCLI, 1}, {VERSE_SHOWCOPYRIGHT, 0}}, L"E_FAIL"},
        {"the licence in another section is not this one", Footer, "[Other]\nCCLI=99\n", m_Grace, 0, 1,
         {{VERSE_SHOWCCLI, 1}, {VERSE_SHOWAUTHOR, 1}}, L"John Newton; Public Domain"},
        {"empty attributes drop out, values are not trimmed", Footer, nullptr,
         {{L"Title", L""}, {L"Author", L" J. N. "}, {L"Copyright", L"PD"}}, 0, 1,
         {{VERSE_SHOWFOOTTITLE, 1}, {VERSE_SHOWAUTHOR, 1}}, L" J. N. ; PD"},
    };
    for (const auto& c : cases) {
        std::filesystem::remove(registryFile);
        if (c.registry)
            WriteBytes(registryFile, c.registry);
        ScopedRegistry registry(registryFile);
        auto song = Song(c.attributes);
        song.As<IFileArchive>()->put_Filename(Str((folder / "how-great-thou-art.sng").wstring()));
        SmartPtr<IVXSongVerse> verse;
        if (c.switches.size())
            verse = Verse(song, 1, c.switches);
        EXPECT_EQ(Band(song, c.band == Header, c.chapter, c.verse, verse), c.expected) << c.what;
    }
}

} // namespace
