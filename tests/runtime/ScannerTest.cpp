// The text scanners at their edges: the song and Bible readers depend on these
// exact results. Every text lies in an exactly sized heap copy with no terminator,
// so a scanner that reads behind its view shows up in the sanitizer build.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "runtime/REFString.h"
#include "runtime/Result.h"

namespace {

class Owned {
public:
    explicit Owned(const std::wstring& text) : m_Data(new wchar_t[text.size()]), m_Length(int32_t(text.size()))
    {
        std::copy(text.begin(), text.end(), m_Data.get());
    }
    CREFString View() const { return CREFString(m_Data.get(), m_Length); }

private:
    std::unique_ptr<wchar_t[]> m_Data;
    int32_t m_Length;
};

std::wstring Of(const tagREFString& view)
{
    return view.m_Length > 0 ? std::wstring(view.m_Buffer, size_t(view.m_Length)) : std::wstring();
}

std::wstring Result(int32_t result) { return result < 0 ? L"F" : std::to_wstring(result); }

using Scan = std::function<int32_t(CREFString& view, CREFString& out)>;

// One call on a copy of the text, read as "r[out]rest": r the result (F for a failure),
// then the output and what the receiver holds afterwards.
std::wstring Once(const std::wstring& text, const Scan& scan, const wchar_t* out = L"")
{
    Owned owned(text);
    CREFString view = owned.View(), output(out);
    int32_t result = scan(view, output);
    return Result(result) + L"[" + Of(output) + L"]" + Of(view);
}

// Runs an advancing line scanner until it stops giving S_OK; each step reads as "[line]r".
std::wstring Lines(const std::wstring& text, const Scan& scan)
{
    Owned owned(text);
    CREFString view = owned.View();
    std::wstring steps;
    for (int32_t result = S_OK; result == S_OK && steps.size() < 100;) {
        CREFString out;
        result = scan(view, out);
        steps += L"[" + Of(out) + L"]" + Result(result);
    }
    return steps;
}

TEST(ScannerTest, GetLineLoopEndsWithTheLastLine)
{
    const struct { std::wstring text; bool strip; std::wstring steps; } cases[] = {
        {L"a\nb", true, L"[a]0[b]1"}, {L"a\n", true, L"[a]1"} /* no empty last line */,
        {L"a\n\nb", false, L"[a\n]0[\n]0[b]1"}, {L"\n", true, L"[]1"}, {L"", true, L"[]F"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Lines(c.text, [&](CREFString& v, CREFString& out) { return v.GetLine(&out, true, L'\n', c.strip); }),
                  c.steps);
    // After the last line: a failure with an empty line.
    EXPECT_EQ(Lines(L"b", [](CREFString& view, CREFString& out) {
                  view.GetLine(&out, true, L'\n', true);
                  return view.GetLine(&out, true, L'\n', true);
              }),
              L"[]F");
    // Without advance: whether text remains; the line is given although the result is a failure.
    auto peek = [](CREFString& view, CREFString& out) { return view.GetLine(&out, false, L'\n', true); };
    for (auto [text, seen] : {std::pair{L"a\nb", L"0[a]a\nb"}, {L"a\n", L"F[a]a\n"}, {L"a", L"F[a]a"}})
        EXPECT_EQ(Once(text, peek), seen);
    // A negative length takes nothing.
    Owned owned(L"abc");
    CREFString view(owned.View().m_Buffer, -3), out;
    EXPECT_EQ(view.GetLine(&out, false, L'\n', false), E_FAIL);
    EXPECT_EQ(out.m_Length, 0);
    EXPECT_EQ(view.GetLine(&out, true, L'\n', false), S_FALSE);
    EXPECT_EQ(view.m_Length, 0);
}

TEST(ScannerTest, GetLineCRLFTakesMixedPairsAsOneEnd)
{
    const struct { std::wstring text; bool strip; std::wstring steps; } cases[] = {
        {L"a\r\nb", true, L"[a]0[b]1"},   {L"a\n\rb", true, L"[a]0[b]1"},        {L"a\n\nb", true, L"[a]0[]0[b]1"},
        {L"a\r\rb", true, L"[a]0[]0[b]1"}, {L"a\r\n", true, L"[a]1"},            {L"a\r\nb", false, L"[a\r\n]0[b]1"},
        {L"\r\n\n", false, L"[\r\n]0[\n]1"}, {L"", true, L"[]F"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Lines(c.text, [&](CREFString& v, CREFString& out) { return v.GetLineCRLF(&out, c.strip, true); }),
                  c.steps);
    // Without advance even the last line is S_OK.
    EXPECT_EQ(Once(L"abc", [](CREFString& view, CREFString& out) { return view.GetLineCRLF(&out, true, false); }),
              L"0[abc]abc");
}

// GetReverseLine, GetLineRight and Crop: the head or the tail at the last separator.
TEST(ScannerTest, ScansFromTheRight)
{
    enum Method { Reverse, Right, CropRight };
    const struct { Method method; std::wstring text; bool advance, skip, whole; std::wstring seen; } cases[] = {
        {Reverse, L"/x", true, true, false, L"F[]/x"},      {Reverse, L"a/b/c", true, true, false, L"0[a/b]c"},
        {Reverse, L"a/b/c", true, false, false, L"0[a/b]/c"}, {Reverse, L"a/b", false, true, false, L"0[a]a/b"},
        {Right, L"a/b", true, true, false, L"0[b]a"},       {Right, L"a/b", true, false, false, L"0[/b]a/"},
        {Right, L"a/b/", false, true, false, L"0[]a/b/"},   {Right, L"b", true, true, true, L"0[b]"},
        {Right, L"b", true, true, false, L"F[]b"},          {CropRight, L"a/b", true, true, false, L"0[b]a"},
        {CropRight, L"x/y/z", true, false, false, L"0[/z]x/y/"}, {CropRight, L"b", true, true, false, L"F[]b"},
        // An empty view leaves GetLineRight's output alone.
        {Right, L"", true, true, true, L"F[untouched]"},
    };
    for (const auto& c : cases) {
        auto scan = [&](CREFString& view, CREFString& out) {
            return c.method == Reverse ? view.GetReverseLine(&out, L'/', c.advance, c.skip)
                   : c.method == Right ? view.GetLineRight(&out, L'/', c.advance, c.skip, c.whole)
                                       : view.Crop(&out, L'/', c.advance, c.skip);
        };
        EXPECT_EQ(Once(c.text, scan, L"untouched"), c.seen) << ::testing::PrintToString(c.text) << " by " << c.method;
    }
}

TEST(ScannerTest, SplitStopsAtADelimiterOrAControlCharacter)
{
    const struct { std::wstring text, delimiters; int stopAtControl; int32_t result; std::wstring left, right; }
    cases[] = {
        {L"ab cd", L" ", 0, S_OK, L"ab", L" cd"}, {L"abcd", L" ", 0, E_FAIL, L"abcd", L""},
        {L"ab\tcd", L",", 1, S_OK, L"ab", L"\tcd"}, {L"ab\tcd", L",", 0, E_FAIL, L"ab\tcd", L""},
        {L"ab\tcd", L"", 1, E_FAIL, L"ab\tcd", L""}, // no delimiters: no control test either
        {L",", L",", 0, S_OK, L"", L","},
    };
    for (const auto& c : cases) {
        Owned owned(c.text), delimiters(c.delimiters);
        CREFString view = owned.View(), left, right;
        EXPECT_EQ(view.Split(&left, &right, delimiters.View(), c.stopAtControl), c.result)
            << ::testing::PrintToString(c.text);
        EXPECT_EQ(Of(left) + L"|" + Of(right) + L"|" + Of(view), c.left + L"|" + c.right + L"|" + c.text);
    }
}

TEST(ScannerTest, GetWordGivesTheDelimitersOneBasedPosition)
{
    // The delimiter isn't skipped; 0: the word runs to the end.
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"ab,cd", L"3[ab],cd"}, {L"abcd", L"0[abcd]"}, {L",x", L"1[],x"}, {L"", L"F[]"}};
    Owned delimiters(L",;");
    auto scan = [&](CREFString& view, CREFString& out) { return view.GetWord(&out, true, delimiters.View()); };
    for (auto [text, seen] : cases)
        EXPECT_EQ(Once(text, scan), seen);
}

TEST(ScannerTest, GetFirstWordTokenises)
{
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"-12.5e+3 x", L"0[-12.5e+3] x"},
        {L"1e5", L"0[1]e5"},       // an exponent only after a fraction
        {L"1.5e3", L"0[1.5]e3"},   // and only with a sign
        {L"12.x", L"0[12].x"},     {L"-x", L"F[]-x"},  {L" a", L"F[] a"},
        {L"abc_def ghi", L"0[abc_def] ghi"}, {L"_x", L"0[_]x"}, {L",a", L"0[,]a"},
        {L"\"a b\" c", L"0[a b] c"}, {L"\"\"x", L"0[]x"},
        {L"\"abc", L"0[\"abc]"},   // unclosed: the quote stays
        {L"ab\"c", L"0[b]c"},      // a quote behind a word takes its first letter off
        {L",\"x", L"0[]x"},        // and behind a mark gives an empty token
        {L"", L"F[]"},
    };
    for (auto [text, seen] : cases)
        EXPECT_EQ(Once(text, [](CREFString& view, CREFString& out) { return view.GetFirstWord(&out, true); }), seen);

    // Digits follow in memory but not in the view: the number ends with the view.
    Owned owned(L"78");
    CREFString view(owned.View().m_Buffer, 1), token;
    EXPECT_EQ(view.GetFirstWord(&token, true), S_OK);
    EXPECT_EQ(Of(token), L"7");
    EXPECT_EQ(view.m_Length, 0);
    // Without an output the closing quote isn't consumed.
    EXPECT_EQ(Once(L"ab\"c", [](CREFString& view, CREFString&) { return view.GetFirstWord(nullptr, true); }),
              L"0[]\"c");
}

TEST(ScannerTest, ContainsScansOnceWithoutGoingBack)
{
    const struct { std::wstring text, needle; int32_t result; } cases[] = {
        {L"xab", L"ab", 1}, {L"ab", L"ab", 1} /* a match at 0 reads as 1 for needles of two or more */,
        {L"a", L"a", 0},    {L"xxa", L"a", 2}, {L"xyab", L"ab", 2},
        {L"aab", L"ab", E_FAIL} /* no second try after a partial match */, {L"xaby", L"ab", 1},
        {L"ab", L"abc", E_FAIL}, {L"abc", L"", E_FAIL}, {L"", L"a", E_FAIL},
    };
    for (const auto& c : cases) {
        Owned text(c.text), needle(c.needle);
        EXPECT_EQ(text.View().Contains(needle.View()), c.result)
            << ::testing::PrintToString(c.text) << " " << ::testing::PrintToString(c.needle);
    }
    // The place behind the needle reads as 0, whatever memory holds there.
    Owned text(L"xabz"), longer(L"abz");
    EXPECT_EQ(text.View().Contains(CREFString(longer.View().m_Buffer, 2)), 1);
    // ContainsChar gives a plain index, 0 included.
    Owned set(L",;");
    EXPECT_EQ(Owned(L"a;b,").View().ContainsChar(set.View()), 1);
    EXPECT_EQ(Owned(L",b").View().ContainsChar(set.View()), 0);
    EXPECT_EQ(Owned(L"ab").View().ContainsChar(set.View()), E_FAIL);
}

TEST(ScannerTest, TrimLeftInBothModes)
{
    const struct { std::wstring text; bool punctuation; std::wstring seen; } cases[] = {
        {L" \t,a", true, L"3[]a"}, {L" \t,a", false, L"2[],a"},
        {L"\u00FE\u00EF\r\na", false, L"4[]a"}, // the bytes of a misread mark go too
        {L"\x01\x02x", false, L"2[]x"}, {L"x ", true, L"0[]x "},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Once(c.text, [&](CREFString& view, CREFString&) { return view.TrimLeft(c.punctuation); }), c.seen);
}

TEST(ScannerTest, CompareIHasThreeResults)
{
    const struct { std::wstring text, other; short prefix; int32_t result; } cases[] = {
        {L"Abc", L"abc", 0, S_OK},       {L"abcd", L"abc", 0, S_FALSE}, {L"ABCD", L"abc", 1, S_FALSE},
        {L"abc", L"abcd", 1, E_FAIL},
        {L"abc", L"abcd", 0, S_FALSE}, // a beginning on either side is S_FALSE
        {L"abx", L"abc", 0, E_FAIL},     {L"a", L"", 0, E_FAIL},
        {L"", L"", 0, E_FAIL}, // two empty strings aren't equal
    };
    for (const auto& c : cases) {
        Owned text(c.text), other(c.other);
        EXPECT_EQ(text.View().CompareI(other.View(), c.prefix), c.result)
            << ::testing::PrintToString(c.text) << " " << ::testing::PrintToString(c.other);
    }
}

} // namespace
