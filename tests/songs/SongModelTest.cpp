// The song as its callers see it: its faces, its text forms both ways, the names it
// keeps across a plain edit, its change events and its one flag of modification.
#include "songs/SongSupport.h"
#include "support/Collections.h"

namespace {

using namespace vxtest;

class SongModel : public SongTest {};

TEST_F(SongModel, TextFormsForEveryFlag)
{
    auto song = NewSong();
    SetText(song, L"<verses><verse id=\"Chorus\">Sing\nloud</verse><verse>  two  </verse></verses>");
    auto attributes = song.As<IParameters>();
    EXPECT_FALSE(SameObject(attributes, song)) << "the attribute set is an object of its own";
    attributes.As<IParametersCreatable>()->Add(Str(L"Title"), Str(L"A <b> c"), nullptr, 0);
    const std::wstring head = L"<?xml version=\"1.0\" encoding=\"UNICODE\"?>\r\n<song xmlns=\"tarnwick/song\">\r\n"
                              L"<attributes>\r\n<Title>A <b> c</Title>\r\n</attributes>\r\n";
    const std::wstring plain = L"Sing\nloud\r\n\r\ntwo\r\n\r\n";
    const std::wstring tagged = L"<verse id=\"Chorus\">\r\nSing\nloud\r\n</verse>\r\n\r\n"
                                L"<verse id=\"Verse2\">\r\ntwo\r\n</verse>\r\n\r\n";
    const std::wstring open = L"<verses>\r\n", close = L"</verses>\r\n";
    const std::wstring expected[8] = {
        plain,        open + plain + close,        tagged,        open + tagged + close,
        head + plain, head + open + plain + close, head + tagged, head + open + tagged + close,
    };
    for (short flags = 0; flags < 8; ++flags)
        EXPECT_EQ(SongText(song, flags), expected[flags]) << "flags " << flags;
    // A song without attributes writes no attribute block, and without verses no text.
    auto bare = NewSong();
    EXPECT_EQ(SongText(bare, SONGTEXT_HEADER).find(L"attributes"), std::wstring::npos);
    EXPECT_EQ(SongText(bare, 0), L"");
}

TEST_F(SongModel, ReadsEachTaggedForm)
{
    struct Case { const char* what; std::wstring text; std::vector<std::wstring> ids;
        std::vector<std::wstring> texts; } cases[] = {
        {"quoted id keeps its blanks, unquoted ends at a blank",
         L"<verses><verse id=\"My Chorus\">a</verse><verse id=Bridge two>b</verse></verses>",
         {L"My Chorus", L"Bridge"}, {L"a", L"b"}},
        {"unquoted id ends at a slash", L"<verses><verse id=\"x/y\">a</verse><verse id=x/y>b</verse></verses>",
         {L"x/y", L"x"}, {L"a", L"b"}},
        {"any first attribute names the verse", L"<verses><verse name='N'>a</verse></verses>", {L"N"}, {L"a"}},
        {"a blank element uses no number",
         L"<verses><verse id=\"A\">a</verse><verse id=\"B\"> \r\n </verse><verse>c</verse></verses>",
         {L"A", L"Verse2"}, {L"a", L"c"}},
        {"bare verse tags", L"<verse id=\"A\">a</verse>\n\n<verse>b</verse>", {L"A", L"Verse2"}, {L"a", L"b"}},
        {"a short tag qualifies", L"<v>x</v><verse>b</verse>", {L"Verse1"}, {L"b"}},
        {"<Verse> alone qualifies but yields nothing", L"<Verse>a</Verse>\n\nb", {}, {}},
        {"another tag is plain text", L"<b>x</b>\n\ny", {L"Verse1", L"Verse2"}, {L"<b>x</b>", L"y"}},
        {"a closing tag first is plain text", L"</verse>a", {L"Verse1"}, {L"</verse>a"}},
        {"an empty tag name is plain text", L"<>x", {L"Verse1"}, {L"<>x"}},
        {"verses win over bare tags", L"<verse>no</verse><verses><verse>yes</verse></verses>", {L"Verse1"},
         {L"yes"}},
    };
    auto song = NewSong();
    for (const Case& c : cases) {
        SetText(song, c.text);
        SongVerses verses = VersesOf(song);
        EXPECT_EQ(verses.ids, c.ids) << c.what;
        EXPECT_EQ(verses.texts, c.texts) << c.what;
    }
}

TEST_F(SongModel, PlainEditKeepsTheNamesByPosition)
{
    auto song = NewSong();
    SetText(song, L"<verses><verse id=\"Chorus\">old one</verse><verse id=\"Bridge\">old two</verse></verses>");
    SetText(song, L"new one\n\nnew two\n\nnew three");
    // The old name comes back whole, its old preview included.
    EXPECT_EQ(ItemNames(song),
              (std::vector<std::wstring>{L"Chorus : old one", L"Bridge : old two", L"Verse3 : new three"}));
    EXPECT_EQ(VersesOf(song).texts, (std::vector<std::wstring>{L"new one", L"new two", L"new three"}));
    // Names beyond the new count fall away; a tagged text carries its own names.
    SetText(song, L"only");
    EXPECT_EQ(ItemNames(song), std::vector<std::wstring>{L"Chorus : old one"});
    SetText(song, L"<verse>tagged</verse>");
    EXPECT_EQ(ItemNames(song), std::vector<std::wstring>{L"Verse1 : tagged"});
}

// The owner hears of every verse made and of Clear; any edit sets the one flag, which only the caller clears.
TEST_F(SongModel, EventsAndTheFlagOfModification)
{
    auto song = NewSong();
    SmartPtr<_IUIRefreshEvent> owner;
    IID iid = IID__IUIRefreshEvent;
    ASSERT_EQ(CObject<CRefreshProbe>::_CreateInstance(nullptr, &iid, owner.ReceiveVoid()), S_OK);
    auto* probe = static_cast<CRefreshProbe*>(owner.get());
    song.As<IParent>()->put_Parent(owner);
    EXPECT_EQ(ArchiveFlag(song, ARCHIVE_MODIFIED), 0);
    auto unflag = [&] { song.As<IFileArchive>()->Control(ARCHIVE_MODIFIED, 0); };
    // modified -1: not looked at
    const struct { const char* what; std::function<void()> run; int events, modified; } steps[] = {
        {"a split into three verses", [&] { SetText(song, L"a\n\nb\n\nc"); }, 3, 1},
        {"cleared by the caller", unflag, 0, 0},
        {"a re-split empties silently, then adds two", [&] { SetText(song, L"a\n\nb"); }, 2, 1},
        {"cleared again", unflag, 0, 0},
        {"a tagged text", [&] { SetText(song, L"<verse>a</verse><verse> </verse>"); }, 1, 1},
        {"Clear", [&] { song.As<ISuperCollection>()->Clear(); }, 1, -1},
        {"and cleared", unflag, 0, 0},
        {"an empty text is an edit too", [&] { SetText(song, L""); }, 0, 1},
        {"and cleared once more", unflag, 0, 0},
        {"a string's Clone", [&] { song.As<ICreatableString>()->Clone(REFLiteral(L"x")); }, -1, 1},
    };
    for (const auto& step : steps) {
        probe->m_Count = 0;
        step.run();
        if (step.events >= 0) {
            EXPECT_EQ(probe->m_Count, step.events) << step.what;
        }
        if (step.modified >= 0) {
            EXPECT_EQ(ArchiveFlag(song, ARCHIVE_MODIFIED), step.modified) << step.what;
        }
    }
    SmartPtr<IUnknown> parent;
    EXPECT_EQ(song.As<IParent>()->get_Parent(parent.Receive()), S_OK);
    EXPECT_TRUE(SameObject(parent, owner));
}

TEST_F(SongModel, AsAStringItYieldsItsPlainText)
{
    auto song = NewSong();
    auto string = song.As<ICreatableString>();
    EXPECT_EQ(static_cast<void*>(song.As<IString>().get()), static_cast<void*>(string.get())) << "one string face";
    EXPECT_EQ(string->Clone(REFLiteral(L"one\n\ntwo")), S_OK);
    EXPECT_EQ(Text(string), L"one\r\n\r\ntwo\r\n\r\n");
    EXPECT_EQ(string->Append(REFLiteral(L"three")), E_FAIL);
    EXPECT_EQ(VersesOf(song).texts.size(), 2u);
    // One buffer for the process: another song's text replaces it.
    auto other = NewSong();
    SetText(other, L"else");
    wchar_t* first = nullptr;
    int length = 0;
    string->GetBuffer(&first, &length);
    EXPECT_EQ(std::wstring(first, size_t(length)), L"one\r\n\r\ntwo\r\n\r\n");
    other.As<IString>()->GetBuffer(&first, &length);
    EXPECT_EQ(std::wstring(first, size_t(length)), L"else\r\n\r\n");
}

} // namespace
