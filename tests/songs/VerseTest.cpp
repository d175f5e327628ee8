// The song verse through its interfaces: the edit bias, the property table, styles,
// replicas, drawing on a recording canvas, and both stream forms.
#include "framework/Renderer/RecordingCanvas.h"
#include "support/Collections.h"
#include "support/Streams.h"

namespace {

using namespace vxtest;

class VerseTest : public ModuleTest {
protected:
    static SmartPtr<IVXSongVerse> Verse(const std::wstring& text)
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
};

TEST_F(VerseTest, EditBiasAndProperties)
{
    auto verse = Verse(L"");
    // Each step, then what readers see of VERSE_NUMBER.
    struct Step {
        const char* what;
        int set;  // >= 0: Control(VERSE_NUMBER, set); -1: put_Text; -2: put_String
        int seen;
    };
    const Step steps[] = {
        {"placed as verse 2", 2, 2},
        {"one edit", -1, 2},        // raw -98: the index still shows
        {"second edit", -1, -98},   // raw -198: one addition only
        {"string set", -2, -98},    // put_String does not bias
        {"placed again", 5, 5},     // writing the number clears the bias
    };
    for (const Step& s : steps) {
        if (s.set >= 0)
            EXPECT_EQ(verse->Control(VERSE_NUMBER, s.set), S_OK);
        else if (s.set == -1)
            verse->put_Text(REFLiteral(L"by hand"));
        else
            verse->put_String(Str(L"string"));
        EXPECT_EQ(Number(verse, VERSE_NUMBER), s.seen) << s.what;
    }

    struct Code {
        int code;
        int32_t result;
        int value;
    };
    const Code codes[] = {
        {VERSE_SHOWTITLE, 19, 0},         {VERSE_SHOWCOPYRIGHT, 19, 1}, {VERSE_HEADERDISPLAY, 67, DISPLAY_NEVER},
        {VERSE_FOOTERDISPLAY, 67, DISPLAY_ALL}, {VERSE_PROP20, E_FAIL, -12345}, {VERSE_PROPERTYCOUNT, S_OK, 10},
        {VERSE_NUMBER, 0x80053, 5},       {2, E_INVALIDARG, -12345},
    };
    for (const Code& c : codes) {
        int value = -12345;
        EXPECT_EQ(verse->Inquire(c.code, &value), c.result) << c.code;
        EXPECT_EQ(value, c.value) << c.code;
    }
    EXPECT_EQ(verse->Control(2, 1), E_INVALIDARG);
    EXPECT_EQ(verse->Control(VERSE_SHOWTITLE, 5), S_OK) << "limits are the pages' business";
    EXPECT_EQ(Number(verse, VERSE_SHOWTITLE), 5);

    auto props = QueryAs<IUIPropInterrogateEx>(verse.get());
    ASSERT_TRUE(props);
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

TEST_F(VerseTest, WithoutAStringTableTheDisplaysStillWork)
{
    // A damaged file reads as none at all (the property table's own tests show it).
    TempFolder folder;
    setenv("VX_STRINGTABLE", (folder / "missing.ini").c_str(), 1);
    auto verse = Verse(L"");
    unsetenv("VX_STRINGTABLE");
    SmartPtr<IUnknown> choices;
    EXPECT_EQ(QueryAs<IUIPropInterrogateEx>(verse.get())->ParameterEnumeration(VERSE_HEADERDISPLAY, choices.Receive()),
              E_INVALIDARG);
    EXPECT_EQ(Number(verse, VERSE_PROPERTYCOUNT), 10);
    EXPECT_EQ(verse->Control(VERSE_HEADERDISPLAY, DISPLAY_LAST), S_OK);
    EXPECT_EQ(verse->Inquire(VERSE_FOOTERDISPLAY, nullptr), 67);
    EXPECT_EQ(Number(verse, VERSE_HEADERDISPLAY), DISPLAY_LAST);
}

TEST_F(VerseTest, FacesBufferParentAndPages)
{
    auto verse = Verse(L"");
    wchar_t* text = reinterpret_cast<wchar_t*>(1);
    int length = -1;
    EXPECT_EQ(verse->GetBuffer(&text, &length), E_FAIL);
    EXPECT_EQ(length, 0);
    // One face for three names: the verse reads as a plain text object.
    auto asText = QueryAs<IVXText>(verse.get());
    auto asString = QueryAs<IString>(verse.get());
    EXPECT_EQ(static_cast<void*>(asText.get()), static_cast<void*>(verse.get()));
    EXPECT_EQ(static_cast<void*>(asString.get()), static_cast<void*>(verse.get()));

    auto parent = QueryAs<IParent>(verse.get());
    SmartPtr<IUnknown> out;
    EXPECT_EQ(parent->get_Parent(out.Receive()), E_FAIL);
    EXPECT_EQ(parent->get_Parent(nullptr), E_POINTER);
    auto song = Create<IVXBook>(L"VXSong");
    EXPECT_EQ(parent->put_Parent(song), E_NOTIMPL);
    verse->put_Source(song);
    verse->put_Source(nullptr);  // ignored: keeps the song
    EXPECT_EQ(parent->get_Parent(out.Receive()), S_OK);
    EXPECT_TRUE(SameObject(out, song));

    SmartPtr<INamedCollection> pages;
    ASSERT_EQ(QueryAs<IUIPropertyPageSpecify>(verse.get())->GetPages(0, pages.Receive(), nullptr), S_OK);
    std::wstring names;
    for (int i = 0; i < 3; ++i) {
        SmartPtr<IUnknown> page;
        pages->get_Item(i, page.Receive());
        names += Text(page) + L";";
    }
    EXPECT_EQ(names, L"VXStuff.VXTextPropPage;UIPropPages.UIRenderStylePropPage;UIPropInterrogatePropPage;");
}

TEST_F(VerseTest, CopyAttributesFromVerseAndPlainStyle)
{
    auto source = Verse(L"source text");
    source->Control(VERSE_NUMBER, 7);
    source->Control(VERSE_SHOWAUTHOR, 1);
    source->Control(VERSE_HEADERDISPLAY, DISPLAY_LAST);
    source->Control(VERSE_SHOWFOOTTITLE, 1);
    QueryAs<IVXRenderStyle>(source.get())->put_FontHeight(40);

    auto plain = Create<IVXRenderStyle>(L"VXRenderStyle");
    plain->put_Color(0x123456);
    plain->put_FontHeight(22);

    auto verse = Verse(L"own text");
    auto style = QueryAs<IVXRenderStyle>(verse.get());
    ASSERT_EQ(style->CopyAttributes(QueryAs<IVXRenderStyle>(source.get())), S_OK);
    EXPECT_EQ(Number(verse, VERSE_SHOWAUTHOR), 1);
    EXPECT_EQ(Number(verse, VERSE_HEADERDISPLAY), DISPLAY_LAST);
    EXPECT_EQ(Number(verse, VERSE_SHOWFOOTTITLE), 1);
    EXPECT_EQ(Number(verse, VERSE_NUMBER), 0) << "the number is not copied";
    EXPECT_EQ(Text(verse), L"own text") << "nor the text";
    int height = 0;
    style->get_FontHeight(&height);
    EXPECT_EQ(height, 40);

    // A plain style brings the look only; the switches stay.
    ASSERT_EQ(style->CopyAttributes(plain), S_OK);
    unsigned int color = 0;
    style->get_Color(&color);
    style->get_FontHeight(&height);
    EXPECT_EQ(color, 0x123456u);
    EXPECT_EQ(height, 22);
    EXPECT_EQ(Number(verse, VERSE_SHOWAUTHOR), 1);
    EXPECT_EQ(style->CopyAttributes(style), S_OK);
    EXPECT_EQ(style->CopyAttributes(nullptr), S_OK);
}

TEST_F(VerseTest, ReplicateMakesPlainTextWithTheStyle)
{
    auto verse = Verse(L"Amazing grace");
    QueryAs<IVXRenderStyle>(verse.get())->put_Color(0xABCDEF);
    SmartPtr<IUnknown> copy;
    ASSERT_EQ(QueryAs<IReplicableObject>(verse.get())->Replicate(copy.Receive()), S_OK);
    EXPECT_FALSE(QueryAs<IVXSongVerse>(copy.get())) << "a replica is no verse";
    EXPECT_EQ(Text(QueryAs<IVXText>(copy.get())), L"Amazing grace");
    unsigned int color = 0;
    QueryAs<IVXRenderStyle>(copy.get())->get_Color(&color);
    EXPECT_EQ(color, 0xABCDEFu);
    EXPECT_EQ(QueryAs<IReplicableObject>(verse.get())->Replicate(nullptr), S_OK);
}

TEST_F(VerseTest, RenderDrawsEachLineInTheVersesStyle)
{
    auto verse = Verse(L"first line\r\nsecond line");
    auto style = QueryAs<IVXRenderStyle>(verse.get());
    style->put_FontHeight(30);
    style->put_Color(0x00FF00);
    style->put_FontFace(REFLiteral(L"Verse Face"));
    auto render = QueryAs<IRenderableObject>(verse.get());
    CANVASRect rect{10, 20, 400, 300};
    struct Case {
        int flags;
        size_t calls;
    };
    for (const Case c : {Case{1, 0}, Case{3, 0}, Case{0, 2}, Case{2, 2}}) {
        RecordingCanvas canvas;
        EXPECT_EQ(render->Render(canvas.Handle(), &rect, nullptr, c.flags), S_OK);
        ASSERT_EQ(canvas.m_Calls.size(), c.calls) << c.flags;
        for (size_t i = 0; i < c.calls; ++i) {
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
    auto verse = Verse(L"");
    verse->put_Text(REFLiteral(L"Saved & <kept>"));
    verse->Control(VERSE_SHOWTITLE, 1);
    verse->Control(VERSE_SHOWFOOTTITLE, 0);
    verse->Control(VERSE_SHOWCCLI, 1);
    verse->Control(VERSE_FOOTERDISPLAY, DISPLAY_FIRST);
    verse->Control(VERSE_SHOWCOPYRIGHT, 0);
    QueryAs<IVXRenderStyle>(verse.get())->put_FontHeight(33);
    auto persist = QueryAs<IDataPersist>(verse.get());

    // The folder form through a file.
    auto saved = Create<IDataStream>(L"FolderStream");
    ASSERT_EQ(persist->Save(saved, 0), S_OK);
    auto loaded = Verse(L"");
    ASSERT_EQ(QueryAs<IDataPersist>(loaded.get())->Load(ThroughFile(saved, folder / "verse.zip"), 0), S_OK);
    EXPECT_EQ(Text(loaded), L"Saved & <kept>");
    EXPECT_EQ(Number(loaded, VERSE_NUMBER), 0) << "raw -100 came back, read with the bias off";
    EXPECT_EQ(Number(loaded, VERSE_SHOWCCLI), 1);
    EXPECT_EQ(Number(loaded, VERSE_FOOTERDISPLAY), DISPLAY_FIRST);
    // "ShowFootTitle" carries the title switch; copyright is not stored.
    EXPECT_EQ(Number(loaded, VERSE_SHOWFOOTTITLE), 0);
    EXPECT_EQ(Number(loaded, VERSE_SHOWTITLE), 1);
    EXPECT_EQ(Number(loaded, VERSE_SHOWCOPYRIGHT), 1);
    int height = 0;
    QueryAs<IVXRenderStyle>(loaded.get())->get_FontHeight(&height);
    EXPECT_EQ(height, 33);
    SmartPtr<IVXBook> source;
    loaded->get_Source(source.Receive());
    EXPECT_FALSE(source);

    // The XML form: text and style only.
    auto xml = Create<IDataStream>(L"XMLStream");
    xml->SetBuffer(nullptr, 0, 0);
    ASSERT_EQ(persist->Save(xml, 0), S_OK);
    std::wstring written = Text(xml);
    auto fromXML = Verse(L"");
    ASSERT_EQ(QueryAs<IDataPersist>(fromXML.get())->Load(XMLReader(written), 0), S_OK);
    EXPECT_EQ(Text(fromXML), L"Saved & <kept>") << Narrow(written);
    QueryAs<IVXRenderStyle>(fromXML.get())->get_FontHeight(&height);
    EXPECT_EQ(height, 33);
    EXPECT_EQ(Number(fromXML, VERSE_SHOWCCLI), 0);
}

} // namespace
