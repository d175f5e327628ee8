// Plain song text: the most used text transformation of the system.
#include "support/Fixture.h"

namespace {

using vxtest::Text;

struct Split {
    std::vector<std::wstring> names;
    std::vector<std::wstring> verses;
};

Split SplitText(IVXSong* song, const std::wstring& text)
{
    song->SetVerses(CREFString(text.data(), int32_t(text.size())), SONGVERSES_PARSE);
    Split out;
    auto collection = QueryAs<ISuperCollection>(song);
    auto book = QueryAs<IVXBook>(song);
    int count = 0;
    EXPECT_EQ(book->get_VerseCount(0, &count), S_OK);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IString> verse;
        EXPECT_EQ(collection->get_ItemName(i, name.Receive()), S_OK);
        EXPECT_EQ(book->get_Verse(0, i, 1, verse.Receive()), S_OK);
        out.names.push_back(Text(name));
        out.verses.push_back(Text(verse));
    }
    return out;
}

class PlainText : public vxtest::ModuleTest {
protected:
    void SetUp() override
    {
        ModuleTest::SetUp();
        m_Song = vxtest::Create<IVXSong>(L"VXSong");
        ASSERT_TRUE(m_Song);
    }
    void TearDown() override
    {
        // The verses point back at their song: clearing lets both go.
        if (m_Song)
            m_Song.As<ISuperCollection>()->Clear();
    }
    SmartPtr<IVXSong> m_Song;
};

TEST_F(PlainText, Splitting)
{
    const std::wstring longLine = L"Amazing grace, how sweet the sound that saved a wretch like me";
    struct Case {
        const char* what;
        std::wstring text;
        std::vector<std::wstring> verses;
    } cases[] = {
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
    for (const Case& c : cases) {
        Split split = SplitText(m_Song, c.text);
        EXPECT_EQ(split.verses, c.verses) << c.what;
    }
}

TEST_F(PlainText, ItemNamesCarryAPreview)
{
    const std::wstring longLine = L"Amazing grace, how sweet the sound that saved a wretch like me";
    Split split = SplitText(m_Song, L"one\n\n" + longLine);
    ASSERT_EQ(split.names.size(), 2u);
    EXPECT_EQ(split.names[0], L"Verse1 : one");
    EXPECT_EQ(split.names[1], L"Verse2 : " + longLine.substr(0, 40));
}

TEST_F(PlainText, PrintingAndReSplitting)
{
    SplitText(m_Song, L"\n one \n\n\n two\r\n");
    SmartPtr<IString> text;
    ASSERT_EQ(m_Song->GetText(text.Receive(), 0), S_OK);
    EXPECT_EQ(Text(text), L"one\r\n\r\ntwo\r\n\r\n");
    // The printed form splits into the same verses.
    std::wstring printed = Text(text);
    EXPECT_EQ(SplitText(m_Song, printed).verses, (std::vector<std::wstring>{L"one", L"two"}));
    // An empty text empties the song.
    EXPECT_TRUE(SplitText(m_Song, L"").verses.empty());
    ASSERT_EQ(m_Song->GetText(text.Receive(), 0), S_OK);
    EXPECT_EQ(Text(text), L"");
}

TEST_F(PlainText, VersesKnowTheirSongAndNumber)
{
    SplitText(m_Song, L"a\n\nb\n\nc");
    auto collection = m_Song.As<ISuperCollection>();
    SmartPtr<IUnknown> item;
    ASSERT_EQ(collection->get_Item(2, item.Receive()), S_OK);
    auto verse = item.As<IVXSongVerse>();
    ASSERT_TRUE(verse);
    int number = -1;
    EXPECT_GT(verse->Inquire(VERSE_NUMBER, &number), 0) << "a positive flags word, not 0";
    EXPECT_EQ(number, 2);
    // A hand edit biases the stored number; readers still see the index.
    verse->put_Text(REFLiteral(L"changed"));
    EXPECT_GT(verse->Inquire(VERSE_NUMBER, &number), 0);
    EXPECT_EQ(number, 2);
    SmartPtr<IVXBook> source;
    ASSERT_EQ(verse->get_Source(source.Receive()), S_OK);
    EXPECT_TRUE(SmartPtr<IUnknown>(source.get()) == m_Song.get());
}

TEST_F(PlainText, ClearingBreaksTheCycle)
{
    SplitText(m_Song, L"a\n\nb\n\nc");
    // Each verse holds its song: three references beyond ours.
    m_Song->AddRef();
    EXPECT_EQ(m_Song->Release(), 4);
    m_Song.As<ISuperCollection>()->Clear();
    m_Song->AddRef();
    EXPECT_EQ(m_Song->Release(), 1);
}

} // namespace
