// The render style through the renderer's "VXRenderStyle": accessor quirks, copying,
// and both kinds of stream with the differences between them that are kept.
#include <sstream>
#include <utility>
#include <vector>

#include "presentation/RenderStyleImpl.h"
#include "support/Streams.h"

namespace {

using namespace vxtest;
using Pairs = std::vector<std::pair<std::wstring, std::wstring>>;

class RenderStyleTest : public ModuleTest {
protected:
    static SmartPtr<IVXRenderStyle> NewStyle() { return Create<IVXRenderStyle>(L"VXRenderStyle"); }

    // The style written in a <Style> element of an XML stream.
    static std::wstring SavedText(IVXRenderStyle* style)
    {
        auto stream = Create<IXMLStream>(L"XMLStream");
        stream->SetBuffer(nullptr, 0, 0);
        stream->OpenElement(Str(L"Style"), 0, 0);
        style->Save(stream, 0);
        stream->CloseElement();
        return WideBuffer(stream);
    }
    // Key and value of each <name>value</name> with no markup inside, in the order written.
    static Pairs Saved(IVXRenderStyle* style)
    {
        std::wstring text = SavedText(style);
        Pairs pairs;
        for (size_t open = text.find(L'<'); open != std::wstring::npos; open = text.find(L'<', open + 1)) {
            size_t close = text.find(L'>', open), end = text.find(L'<', close);
            std::wstring name = text.substr(open + 1, close - open - 1);
            bool closed = end != std::wstring::npos && text.compare(end, name.size() + 3, L"</" + name + L">") == 0;
            if (!name.empty() && closed)
                pairs.emplace_back(name, text.substr(close + 1, end - close - 1));
        }
        return pairs;
    }
    static std::wstring Saved(IVXRenderStyle* style, const std::wstring& key)
    {
        for (const auto& [name, value] : Saved(style))
            if (name == key)
                return value;
        return L"(none)";
    }
    // Reads a <Style> element, as an owner's Load hands it on.
    static void LoadXML(IVXRenderStyle* style, std::wstring text)
    {
        if (text.rfind(L"<Style>", 0) != 0)
            text = L"<Style>" + text + L"</Style>";
        auto stream = Create<IXMLStream>(L"XMLStream");
        stream->SetBuffer(text.data(), int(text.size() * sizeof(wchar_t)), 0);
        tagREFString root{0, nullptr};
        SmartPtr<IUnknown> element;
        stream->NextAttribute(&root);
        ASSERT_GE(stream->GetAttribute(root, nullptr, element.Receive(), 1), 0);
        style->Load(QueryAs<IDataStream>(element.get()), 0);
    }
};

TEST_F(RenderStyleTest, WritesEveryKeyInOrderWithDefaults)
{
    const Pairs expected = {
        {L"Color", L"#FFFF00"}, {L"BackColor", L"#000000"}, {L"ColorShadow", L"#010101"},
        {L"ColorOutline", L"#010101"}, {L"TextAlignX", L"-1"}, {L"TextAlignY", L"1"}, {L"TextShadowX", L"3"},
        {L"TextShadowY", L"3"}, {L"NumberLines", L"10"}, {L"OutlineFont", L"0"}, {L"OutlineThickness", L"1"},
        {L"Angle", L"0"}, {L"DisplayMode", L"0"}, {L"Height", L"12"}, {L"Width", L"0"}, {L"Italic", L"0"},
        {L"Boldness", L"550"}, {L"Underline", L"0"}, {L"StrikeOut", L"0"}, {L"Orientation", L"0"},
        {L"FontFace", L"Courier New"}};
    EXPECT_EQ(Saved(NewStyle()), expected);
}

TEST_F(RenderStyleTest, AccessorsKeepTheirQuirks)
{
    using S = IVXRenderStyle;
    const struct {
        int32_t (S::*m_Put)(int);
        int32_t (S::*m_Get)(int*);
        int m_In, m_Out;
    } cases[] = {{&S::put_FontWidth, &S::get_FontHeight, 20, 20}, {&S::put_FontHeight, &S::get_FontWidth, 30, 30},
                 {&S::put_Boldness, &S::get_Boldness, 5000, 1000}, {&S::put_Boldness, &S::get_Boldness, -5, -5},
                 {&S::put_Underline, &S::get_Underline, 257, 1},   {&S::put_Underline, &S::get_Underline, -1, 255}};
    for (const auto& c : cases) {
        auto style = NewStyle();
        EXPECT_EQ((style.get()->*c.m_Put)(c.m_In), S_OK);
        int out = 0;
        EXPECT_EQ((style.get()->*c.m_Get)(&out), S_OK);
        EXPECT_EQ(out, c.m_Out) << c.m_In;
        EXPECT_EQ((style.get()->*c.m_Get)(nullptr), S_OK);
        // The real width is never reached by its accessors.
        EXPECT_EQ(Saved(style, L"Width"), L"0");
    }
    short y = 0;
    EXPECT_EQ(NewStyle()->GetTextLayout(nullptr, &y), S_OK);
    EXPECT_EQ(y, 1);
    EXPECT_EQ(NewStyle()->get_FontFace(nullptr), E_POINTER);
}

TEST_F(RenderStyleTest, XMLValuesParseByTheirKeysRules)
{
    const wchar_t* cases[][3] = {
        {L"<Color>#80563412</Color>", L"Color", L"#563412"},
        {L"<Angle>12.5</Angle>", L"Angle", L"12"},
        {L"<Height>#1f</Height>", L"Height", L"31"},
        {L"<HEIGHT>30</HEIGHT><Heigh>40</Heigh><Other>50</Other>", L"Height", L"30"},
        {L"<fontface>Arial</fontface>", L"FontFace", L"Arial"},
        {L"<Italic>65537</Italic>", L"Italic", L"1"},
        {L"<Italic>40000</Italic>", L"Italic", L"-25536"},
        {L"<Boldness>5000</Boldness>", L"Boldness", L"5000"},
        {L"<Width>12abc</Width>", L"Width", L"12"},
    };
    for (const auto& c : cases) {
        auto style = NewStyle();
        LoadXML(style, c[0]);
        EXPECT_EQ(Saved(style, c[1]), c[2]) << Narrow(c[0]);
    }
}

TEST_F(RenderStyleTest, StreamKindsDifferWhereTheyAlwaysHave)
{
    auto source = NewStyle();
    source->put_Color(0x80123456);
    source->put_Angle(12.5);
    source->put_Italics(40000);
    LoadXML(source, L"<Orientation>9</Orientation><Width>33</Width><StrikeOut>1</StrikeOut>");
    EXPECT_EQ(Saved(source, L"Color"), L"#80563412");
    EXPECT_EQ(Saved(source, L"Angle"), L"12.5");
    auto viaXML = NewStyle(), viaFolder = NewStyle();
    LoadXML(viaXML, SavedText(source));
    LoadXML(viaFolder, L"<Orientation>5</Orientation>");
    // Through a real folder file, by the styles' IDataPersist faces.
    TempFolder folder;
    auto out = Create<IDataStream>(L"FolderStream");
    QueryAs<IDataPersist>(source.get())->Save(out, 0);
    QueryAs<IDataPersist>(viaFolder.get())->Load(ThroughFile(out, folder / "style.tBL"), 0);

    // The XML form drops the colour's top byte and reads the angle and italics as whole and short.
    for (auto [style, expected] : {std::pair{viaXML.get(), L"1193046 12 -25536 9"},
                                   std::pair{viaFolder.get(), L"2148676694 12.5 40000 5"}}) {
        unsigned int color = 0;
        double angle = 0;
        int italics = 0;
        style->get_Color(&color);
        style->get_Angle(&angle);
        style->get_Italics(&italics);
        std::wostringstream seen;
        seen << color << L" " << angle << L" " << italics << L" " << Saved(style, L"Orientation");
        EXPECT_EQ(seen.str(), expected);
        EXPECT_EQ(Saved(style, L"Width") + Saved(style, L"StrikeOut"), L"331");
    }
}

TEST_F(RenderStyleTest, CopyTakesTheAccessibleAttributesAndSharesTheFace)
{
    auto source = NewStyle();
    // A value of its own for each key, so that no two attributes can be mixed up unseen.
    std::wstring all;
    int n = 20;
    for (const auto& [key, value] : Saved(source))
        all += L"<" + key + L">" + (key == L"FontFace" ? L"Arial" : std::to_wstring(n++)) + L"</" + key + L">";
    LoadXML(source, all);
    auto target = NewStyle();
    LoadXML(target, L"<Width>9</Width><StrikeOut>2</StrikeOut><Orientation>8</Orientation>");
    Pairs before = Saved(target);
    for (IVXRenderStyle* unchanged : {static_cast<IVXRenderStyle*>(nullptr), target.get()}) {
        EXPECT_EQ(target->CopyAttributes(unchanged), S_OK);
        EXPECT_EQ(Saved(target), before);
    }
    EXPECT_EQ(target->CopyAttributes(source), S_OK);
    Pairs copied = Saved(target), original = Saved(source);
    ASSERT_EQ(copied.size(), original.size());
    for (size_t i = 0; i < copied.size(); ++i) {
        bool kept = copied[i].first == L"Width" || copied[i].first == L"StrikeOut" || copied[i].first == L"Orientation";
        EXPECT_EQ(copied[i].second, kept ? before[i].second : original[i].second) << Narrow(copied[i].first);
    }
    SmartPtr<IString> mine, theirs;
    target->get_FontFace(mine.Receive());
    source->get_FontFace(theirs.Receive());
    EXPECT_EQ(mine.get(), theirs.get());
}

TEST_F(RenderStyleTest, ReservedSourceCopiesTheOneDefaultStyle)
{
    auto standard = Create<IVXRenderStyle>(L"UIDefault");
    ASSERT_TRUE(standard);
    EXPECT_TRUE(SameObject(standard, Create<IVXRenderStyle>(L"UIDefault")));
    standard->put_Color(0x123);
    auto target = NewStyle();
    EXPECT_EQ(target->CopyAttributes(kRenderStyleUIDefault), S_OK);
    unsigned int color = 0;
    target->get_Color(&color);
    EXPECT_EQ(color, 0x123u);
    // The default copied into itself changes nothing; then it is put back for others.
    EXPECT_EQ(standard->CopyAttributes(kRenderStyleUIDefault), S_OK);
    standard->CopyAttributes(NewStyle());
}

} // namespace
