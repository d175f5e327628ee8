// The song verse through its interfaces: the edit bias, the property table and the
// labels of its displays, styles, replicas, drawing on a recording canvas, and both
// stream forms.
#include "framework/Renderer/RecordingCanvas.h"
#include "songs/SongSupport.h"
#include "support/Collections.h"
#include "support/Streams.h"

namespace {

using namespace vxtest;

class VerseTest : public SongTest {
protected:
    void TearDown() override
    {
        unsetenv("VX_STRINGTABLE");
        SongTest::TearDown();
    }
    static SmartPtr<IVXSongVerse> Verse(const std::wstring& text = L"")
    {
        auto verse = Create<IVXSongVerse>(L"VXSongVerse");
        EXPECT_TRUE(verse);
        if (verse && !text.empty())
            verse->put_String(Str(text));
        return verse;
    }
    static int Number(IVXSongVerse* verse, int code)
    {
        int value = -12345;
        verse->Inquire(code, &value);
        return value;
    }
    static int Height(IUnknown* object)
    {
        int height = 0;
        QueryAs<IVXRenderStyle>(object)->get_FontHeight(&height);
        return height;
    }
    // The labels of one display of every verse; "none" for a display without them.
    static std::vector<std::wstring> Labels(IVXSong* song, int code)
    {
        std::vector<std::wstring> all;
        for (int i = 0, count = Count(QueryAs<ISuperCollection>(song)); i < count; ++i) {
            SmartPtr<IUnknown> choices;
            std::wstring joined;
            auto verse = QueryAs<IUIPropInterrogateEx>(VerseAt(song, i).get());
            if (verse->ParameterEnumeration(code, choices.Receive()) < 0)
                joined = L"none";
            for (const std::wstring& name : ItemNames(choices))
                joined += (joined.empty() ? L"" : L"|") + name;
            all.push_back(joined);
        }
        return all;
    }
};

TEST_F(VerseTest, EditBiasAndProperties)
{
    auto verse = Verse();
    // Each step, then what readers see of VERSE_NUMBER.
    // set >= 0: Control(VERSE_NUMBER, set); -1: put_Text; -2: put_String
    const struct { const char* what; int set, seen; } steps[] = {
        {"placed as verse 2", 2, 2}, {"one edit", -1, 2} /* raw -98: the index still shows */,
        {"second edit", -1, -98} /* raw -198: one addition only */, {"string set", -2, -98},
        {"placed again", 5, 5} /* writing the number clears the bias */};
    for (const auto& s : steps) {
        if (s.set >= 0)
            EXPECT_EQ(verse->Control(VERSE_NUMBER, s.set), S_OK);
        else if (s.set == -1)
            verse->put_Text(REFLiteral(L"by hand"));
        else
            verse->put_String(Str(L"string"));
        EXPECT_EQ(Number(verse, VERSE_NUMBER), s.seen) << s.what;
    }

    const struct { int code; int32_t result; int value; } codes[] = {
        {VERSE_SHOWTITLE, 19, 0},         {VERSE_SHOWCOPYRIGHT, 19, 1}, {VERSE_HEADERDISPLAY, 67, DISPLAY_NEVER},
        {VERSE_FOOTERDISPLAY, 67, DISPLAY_ALL}, {VERSE_PROP20, E_FAIL, -12345}, {VERSE_PROPERTYCOUNT, S_OK, 10},
        {VERSE_NUMBER, 0x80053, 5},       {2, E_INVALIDARG, -12345},
    };
    for (const auto& c : codes) {
        int value = -12345;
        EXPECT_EQ(verse->Inquire(c.code, &value), c.result) << c.code;
        EXPECT_EQ(value, c.value) << c.code;
    }
    EXPECT_EQ(verse->Control(2, 1), E_INVALIDARG);
    EXPECT_EQ(verse->Control(VERSE_SHOWTITLE, 5), S_OK) << "limits are the pages' business";
    EXPECT_EQ(Number(verse, VERSE_SHOWTITLE), 5);

    auto props = QueryAs<IUIPropInterrogateEx>(verse.get());
    int low = -1, high = -1;
    EXPECT_EQ(props->ParameterRange(VERSE_SHOWCCLI, &low, &high), S_OK);
    EXPECT_EQ(high, 1);
    EXPECT_EQ(props->ParameterRange(VERSE_PROPERTYCOUNT, &low, &high), S_OK);
    EXPECT_EQ(low * 100 + high, 1 * 100 + 29);
    // The display choices take their labels from the shipped string table.
    SmartPtr<IUnknown> choices;
    ASSERT_EQ(props->ParameterEnumeration(VERSE_FOOTERDISPLAY, choices.Receive()), S_OK);
    EXPECT_EQ(ItemNames(choices), (std::vector<std::wstring>{L"Never", L"First", L"Last", L"All"}));
}

// A song reads the string table once while it cuts its text, and a later cut sees the
// file as it is then: changed, gone, or back. Without labels the displays are still properties.
TEST_F(VerseTest, EachCutReadsTheLabelsTableAsItIsThen)
{
    TempFolder folder;
    const auto table = folder / "strings.ini";
    setenv("VX_STRINGTABLE", table.c_str(), 1);
    // A null file: the file is removed.
    const struct { const char* what; const char* file; const wchar_t* labels; } steps[] = {
        {"first reading", "[VXSongVerse]\n30=Never|First|Last|All\n", L"Never|First|Last|All"},
        {"labels changed", "[VXSongVerse]\n30=Nie|Erst|Letzt|Immer\n", L"Nie|Erst|Letzt|Immer"},
        {"same size, other text", "[VXSongVerse]\n30=Nie|Erst|Letzt|Imxer\n", L"Nie|Erst|Letzt|Imxer"},
        {"another component only", "[VXBible]\n30=A|B\n", L"none"},
        {"file gone", nullptr, L"none"},
        {"file back", "[VXSongVerse]\n1=Verse number\n30=Only|Two\n", L"Only|Two"},
    };
    auto song = NewSong();
    auto other = NewSong();
    for (const auto& step : steps) {
        if (step.file)
            WriteBytes(table, step.file);
        else
            std::filesystem::remove(table);
        // A plain cut and a tagged one; both songs see the same file.
        SetText(song, L"One\n\nTwo\n\nThree\n");
        SetText(other, L"<verses><verse id=\"a\">A</verse><verse id=\"b\">B</verse></verses>");
        const std::vector<std::wstring> three(3, step.labels), two(2, step.labels);
        for (int code : {VERSE_HEADERDISPLAY, VERSE_FOOTERDISPLAY}) {
            EXPECT_EQ(Labels(song, code), three) << step.what;
            EXPECT_EQ(Labels(other, code), two) << step.what;
        }
        EXPECT_EQ(Number(VerseAt(song, 0), VERSE_PROPERTYCOUNT), 10) << step.what;
        EXPECT_EQ(VerseAt(other, 1)->Inquire(VERSE_FOOTERDISPLAY, nullptr), 67) << step.what;
    }
}

TEST_F(VerseTest, FacesBufferAndParent)
{
    auto verse = Verse();
    wchar_t* text = reinterpret_cast<wchar_t*>(1);
    int length = -1;
    EXPECT_EQ(verse->GetBuffer(&text, &length), E_FAIL);
    EXPECT_EQ(length, 0);
    // One face for three names: the verse reads as a plain text object.
    EXPECT_EQ(static_cast<void*>(QueryAs<IVXText>(verse.get()).get()), static_cast<void*>(verse.get()));
    EXPECT_EQ(static_cast<void*>(QueryAs<IString>(verse.get()).get()), static_cast<void*>(verse.get()));

    auto parent = QueryAs<IParent>(verse.get());
    SmartPtr<IUnknown> out;
    EXPECT_EQ(parent->get_Parent(out.Receive()), E_FAIL);
    EXPECT_EQ(parent->get_Parent(nullptr), E_POINTER);
    auto song = Create<IVXBook>(L"VXSong");
    EXPECT_EQ(parent->put_Parent(song), E_NOTIMPL);
    verse->put_Source(song);
    verse->put_Source(nullptr); // ignored: keeps the song
    EXPECT_EQ(parent->get_Parent(out.Receive()), S_OK);
    EXPECT_TRUE(SameObject(out, song));
}

// From a verse come its switches and look, never its number or text; a plain style brings the look only.
TEST_F(VerseTest, CopyAttributesFromVerseAndPlainStyle)
{
    auto source = Verse(L"source text");
    for (int code : {VERSE_SHOWAUTHOR, VERSE_SHOWFOOTTITLE})
        source->Control(code, 1);
    source->Control(VERSE_NUMBER, 7);
    source->Control(VERSE_HEADERDISPLAY, DISPLAY_LAST);
    QueryAs<IVXRenderStyle>(source.get())->put_FontHeight(40);
    auto plain = Create<IVXRenderStyle>(L"VXRenderStyle");
    plain->put_FontHeight(22);

    auto verse = Verse(L"own text");
    auto style = QueryAs<IVXRenderStyle>(verse.get());
    ASSERT_EQ(style->CopyAttributes(QueryAs<IVXRenderStyle>(source.get())), S_OK);
    auto state = [&] {
        return std::vector<int>{Number(verse, VERSE_SHOWAUTHOR), Number(verse, VERSE_HEADERDISPLAY),
                                Number(verse, VERSE_SHOWFOOTTITLE), Number(verse, VERSE_NUMBER), Height(verse)};
    };
    EXPECT_EQ(state(), (std::vector<int>{1, DISPLAY_LAST, 1, 0, 40}));
    EXPECT_EQ(Text(verse), L"own text");
    ASSERT_EQ(style->CopyAttributes(plain), S_OK);
    EXPECT_EQ(state(), (std::vector<int>{1, DISPLAY_LAST, 1, 0, 22}));
    EXPECT_EQ(style->CopyAttributes(style), S_OK);
    EXPECT_EQ(style->CopyAttributes(nullptr), S_OK);
}

TEST_F(VerseTest, ReplicateMakesPlainTextWithTheStyle)
{
    auto verse = Verse(L"Amazing grace");
    QueryAs<IVXRenderStyle>(verse.get())->put_FontHeight(41);
    SmartPtr<IUnknown> copy;
    ASSERT_EQ(QueryAs<IReplicableObject>(verse.get())->Replicate(copy.Receive()), S_OK);
    EXPECT_FALSE(QueryAs<IVXSongVerse>(copy.get())) << "a replica is no verse";
    EXPECT_EQ(Text(QueryAs<IVXText>(copy.get())), L"Amazing grace");
    EXPECT_EQ(Height(copy), 41);
    EXPECT_EQ(QueryAs<IReplicableObject>(verse.get())->Replicate(nullptr), S_OK);
}

TEST_F(VerseTest, RenderDrawsEachLineInTheVersesStyle)
{
    auto verse = Verse(L"first line\r\nsecond line");
    auto style = QueryAs<IVXRenderStyle>(verse.get());
    style->put_FontHeight(30);
    style->put_Color(0x00FF00);
    style->put_FontFace(REFLiteral(L"Verse Face"));
    CANVASRect rect{10, 20, 400, 300};
    for (auto [flags, calls] : {std::pair{1, 0u}, {3, 0u}, {0, 2u}, {2, 2u}}) {
        RecordingCanvas canvas;
        EXPECT_EQ(QueryAs<IRenderableObject>(verse.get())->Render(canvas.Handle(), &rect, nullptr, flags), S_OK);
        ASSERT_EQ(canvas.m_Calls.size(), calls) << flags;
        for (size_t i = 0; i < calls; ++i) {
            const RecordingCanvas::Call& call = canvas.m_Calls[i];
            EXPECT_TRUE(call.m_IsText);
            EXPECT_EQ(call.m_Text, i == 0 ? L"first line" : L"second line");
            EXPECT_EQ(call.m_Rect.top, 20 + int(i) * 30);
            EXPECT_EQ(call.m_Style.m_Face, L"Verse Face");
            EXPECT_EQ(call.m_Style.m_Color, 0x00FF00u);
        }
    }
}

TEST_F(VerseTest, BothStreamFormsIntoAFreshVerse)
{
    TempFolder folder;
    auto verse = Verse();
    verse->put_Text(REFLiteral(L"Saved & <kept>"));
    const std::pair<int, int> switches[] = {{VERSE_SHOWTITLE, 1}, {VERSE_SHOWFOOTTITLE, 0}, {VERSE_SHOWCCLI, 1},
                                            {VERSE_FOOTERDISPLAY, DISPLAY_FIRST}, {VERSE_SHOWCOPYRIGHT, 0}};
    for (auto [code, value] : switches)
        verse->Control(code, value);
    QueryAs<IVXRenderStyle>(verse.get())->put_FontHeight(33);
    auto persist = QueryAs<IDataPersist>(verse.get());

    // The folder form through a file.
    auto saved = Create<IDataStream>(L"FolderStream");
    ASSERT_EQ(persist->Save(saved, 0), S_OK);
    auto loaded = Verse();
    ASSERT_EQ(QueryAs<IDataPersist>(loaded.get())->Load(ThroughFile(saved, folder / "verse.zip"), 0), S_OK);
    EXPECT_EQ(Text(loaded), L"Saved & <kept>");
    EXPECT_EQ(Number(loaded, VERSE_NUMBER), 0) << "raw -100 came back, read with the bias off";
    // "ShowFootTitle" carries the title switch; copyright is not stored.
    const std::pair<int, int> back[] = {{VERSE_SHOWCCLI, 1}, {VERSE_FOOTERDISPLAY, DISPLAY_FIRST},
                                        {VERSE_SHOWFOOTTITLE, 0}, {VERSE_SHOWTITLE, 1}, {VERSE_SHOWCOPYRIGHT, 1}};
    for (auto [code, value] : back)
        EXPECT_EQ(Number(loaded, code), value) << code;
    EXPECT_EQ(Height(loaded), 33);
    SmartPtr<IVXBook> source;
    loaded->get_Source(source.Receive());
    EXPECT_FALSE(source);

    // The XML form: text and style only.
    auto xml = Create<IDataStream>(L"XMLStream");
    xml->SetBuffer(nullptr, 0, 0);
    ASSERT_EQ(persist->Save(xml, 0), S_OK);
    std::wstring written = Text(xml);
    auto fromXML = Verse();
    ASSERT_EQ(QueryAs<IDataPersist>(fromXML.get())->Load(XMLReader(written), 0), S_OK);
    EXPECT_EQ(Text(fromXML), L"Saved & <kept>") << Narrow(written);
    EXPECT_EQ(Height(fromXML), 33);
    EXPECT_EQ(Number(fromXML, VERSE_SHOWCCLI), 0);
}

} // namespace
