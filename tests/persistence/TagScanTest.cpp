// The two tag scanners on the shapes song and Bible text really hold.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "persistence/TagScan.h"

namespace {

std::wstring Str(const CREFString& view)
{
    return view.m_Length > 0 ? std::wstring(view.m_Buffer, size_t(view.m_Length)) : std::wstring();
}

TEST(TagScan, FindsOneElementByName)
{
    const struct { const wchar_t* m_Tag; const wchar_t* m_Text; short m_Advance; int32_t m_Result;
        const wchar_t* m_Attributes; const wchar_t* m_Content; const wchar_t* m_TextAfter; } cases[] = {
        {L"b", L"<a>1</a><b x='2'>3</b>4", 1, S_OK, L" x='2'", L"3", L"4"},
        {L"b", L"<a>1</a><b x='2'>3</b>4", 0, S_OK, L" x='2'", L"3", L"<a>1</a><b x='2'>3</b>4"},
        // The opening pattern is a prefix: "verse" finds "<verses>".
        {L"verse", L"<verses><verse>a</verse></verses>", 1, S_OK, L"s", L"<verse>a", L"</verses>"},
        {L"a", L"<a>x", 1, S_OK, L"", L"", L"x"},
        {L"a", L"<a/>y", 1, S_OK, L"", L"", L"y"},
        // No special case for self-closing: the element runs to the next closing tag.
        {L"a", L"<a/>y</a>z", 1, S_OK, L"", L"y", L"z"},
        {L"xml", L"<xml version=\"1\"?>", 1, S_OK, L" version=\"1\"", L"", L""},
        {L"a b", L"<a>1</a>", 1, S_OK, L"", L"1", L""},
        {L"a>junk", L"<a k=v>1</a>", 1, S_OK, L" k=v", L"1", L""},
        {L"a\rjunk", L"<a>1</a>!", 1, S_OK, L"", L"1", L"!"},
        // The first closing tag wins: no nesting.
        {L"a", L"<a><a>in</a>out</a>", 1, S_OK, L"", L"<a>in", L"out</a>"},
        // Without ">" the attributes and the content run to the end.
        {L"a", L"<a href", 1, S_OK, L" href", L"", L" href"},
        // A search that mismatches starts again at the mismatching character.
        {L"a", L"<<a>1</a>", 1, S_OK, L"", L"1", L""},
        // What a partial match passed is not looked at again: "<<a" isn't found in "<<<a".
        {L"<a", L"<<<a>1", 1, E_FAIL, L"(kept)", L"<<<a>1", L"<<<a>1"},
        {L"a", L"<?a b?>", 1, E_FAIL, L"(kept)", L"<?a b?>", L"<?a b?>"},
        {L"a", L"", 1, E_FAIL, L"(kept)", L"", L""},
        // An empty name looks for "<" and "</>".
        {L"", L"x<p>1</>2", 1, S_OK, L"p", L"1", L"2"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::wstring(c.m_Tag) + L" in " + c.m_Text);
        std::wstring buffer = c.m_Text;
        CREFString text(buffer.data(), int32_t(buffer.size()));
        CREFString tag(c.m_Tag);
        CREFString attributes(L"(kept)");
        CREFString content;
        EXPECT_EQ(XMLGetTAGGED(text, tag, attributes, content, c.m_Advance), c.m_Result);
        EXPECT_EQ(Str(attributes), c.m_Attributes);
        EXPECT_EQ(Str(content), c.m_Content);
        EXPECT_EQ(Str(text), c.m_TextAfter);
    }
}

TEST(TagScan, ReadsNothingBehindTheView)
{
    // The closing tag's ">" lies just behind the view: it belongs to someone else.
    std::wstring buffer = L"<a>x</a>";
    CREFString text(buffer.data(), int32_t(buffer.size()) - 1);
    CREFString tag(L"a");
    CREFString attributes;
    CREFString content;
    EXPECT_EQ(XMLGetTAGGED(text, tag, attributes, content, 1), S_OK);
    EXPECT_EQ(Str(content), L"");
    EXPECT_EQ(Str(text), L"x</a");

    // The opening pattern may not end behind the view either.
    CREFString cut(buffer.data(), 1);
    EXPECT_EQ(XMLGetTAGGED(cut, tag, attributes, content, 1), E_FAIL);

    // A quoted value whose closing quote lies behind the view runs to the view's end.
    std::wstring pair = L"k=\"v\"";
    CREFString rest(pair.data(), int32_t(pair.size()) - 1);
    CREFString name;
    CREFString value;
    EXPECT_EQ(XMLGetNextTAGAttribute(rest, name, value), S_OK);
    EXPECT_EQ(Str(value), L"v");
    EXPECT_EQ(rest.m_Length, 0);
    EXPECT_EQ(rest.m_Buffer, pair.data() + 4);
}

struct Step { int32_t m_Result; std::wstring m_Name; std::wstring m_Value; };

TEST(TagScan, WalksTheAttributesOfATag)
{
    // m_Steps: up to and including the first failure
    const struct { const wchar_t* m_Attributes; std::vector<Step> m_Steps; const wchar_t* m_Left; } cases[] = {
        {L" id=\"1\" name='x y' z=3/",
         {{S_OK, L"id", L"1"}, {S_OK, L"name", L"x y"}, {S_OK, L"z", L"3"}, {E_FAIL, L"", L""}}, L""},
        {L"a", {{S_OK, L"a", L"a"}, {E_FAIL, L"", L""}}, L""},
        {L"=x", {{E_FAIL, L"", L""}}, L"x"},
        {L"a=\"b", {{S_OK, L"a", L"b"}, {E_FAIL, L"", L""}}, L""},
        {L"a=\"", {{S_OK, L"a", L""}, {E_FAIL, L"", L""}}, L""},
        {L"a=", {{E_FAIL, L"a", L""}}, L""},
        // A space or a colon ends a name: the value is whatever comes next.
        {L"a = 1", {{S_OK, L"a", L"="}, {S_OK, L"1", L"1"}, {E_FAIL, L"", L""}}, L""},
        {L"xmlns:x=\"y\"", {{S_OK, L"xmlns", L"x=\"y\""}, {E_FAIL, L"", L""}}, L""},
        // Leading white space, control characters and stray mark bytes are skipped.
        {L"\t\x00FE\x00EF k=v", {{S_OK, L"k", L"v"}, {E_FAIL, L"", L""}}, L""},
        {L"", {{E_FAIL, L"", L""}}, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_Attributes);
        std::wstring buffer = c.m_Attributes;
        CREFString attributes(buffer.data(), int32_t(buffer.size()));
        for (const Step& step : c.m_Steps) {
            CREFString name;
            CREFString value;
            ASSERT_EQ(XMLGetNextTAGAttribute(attributes, name, value), step.m_Result);
            EXPECT_EQ(Str(name), step.m_Name);
            EXPECT_EQ(Str(value), step.m_Value);
        }
        EXPECT_EQ(Str(attributes), c.m_Left);
    }
}

} // namespace
