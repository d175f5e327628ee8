// The text scanners at their edges: the song and Bible readers depend on these
// exact results. Every text lies in an exactly sized heap copy with no terminator,
// so a scanner that reads behind its view shows up in the sanitizer build.
#include <gtest/gtest.h>

#include <algorithm>
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

// Runs an advancing line scanner until it stops giving S_OK. Each step reads as
// "[line]r", r being 0 for S_OK, 1 for S_FALSE and F for a failure.
template <class Scan> std::wstring Lines(const std::wstring& text, Scan scan)
{
    Owned owned(text);
    CREFString view = owned.View();
    std::wstring steps;
    for (int32_t result = S_OK; result == S_OK && steps.size() < 100;) {
        CREFString out;
        result = scan(view, out);
        steps += L"[" + Of(out) + L"]" + (result < 0 ? L"F" : std::to_wstring(result));
    }
    return steps;
}

TEST(ScannerTest, GetLineLoopEndsWithTheLastLine)
{
    struct Case { std::wstring text; bool strip; std::wstring steps; };
    const Case cases[] = {
        {L"a\nb", true, L"[a]0[b]1"},
        {L"a\n", true, L"[a]1"}, // no empty last line
        {L"a\n\nb", false, L"[a\n]0[\n]0[b]1"},
        {L"\n", true, L"[]1"},
        {L"", true, L"[]F"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Lines(c.text, [&](CREFString& view, CREFString& out) { return view.GetLine(&out, true, L'\n', c.strip); }),
                  c.steps);
    // After the last line: a failure with an empty line.
    Owned owned(L"b");
    CREFString view = owned.View(), out;
    view.GetLine(&out, true, L'\n', true);
    EXPECT_EQ(view.GetLine(&out, true, L'\n', true), E_FAIL);
    EXPECT_EQ(out.m_Length, 0);
}

TEST(ScannerTest, GetLineWithoutAdvanceTellsWhetherTextRemains)
{
    struct Case { std::wstring text; int32_t result; std::wstring line; };
    const Case cases[] = {
        {L"a\nb", S_OK, L"a"},
        {L"a\n", E_FAIL, L"a"}, // the line is given although the result is a failure
        {L"a", E_FAIL, L"a"},
    };
    for (const Case& c : cases) {
        Owned owned(c.text);
        CREFString view = owned.View();
        CREFString out;
        EXPECT_EQ(view.GetLine(&out, false, L'\n', true), c.result) << ::testing::PrintToString(c.text);
        EXPECT_EQ(Of(out), c.line);
        EXPECT_EQ(Of(view), c.text);
    }
}

TEST(ScannerTest, GetLineOnANegativeLengthTakesNothing)
{
    Owned owned(L"abc");
    CREFString view(owned.View().m_Buffer, -3);
    CREFString out;
    EXPECT_EQ(view.GetLine(&out, false, L'\n', false), E_FAIL);
    EXPECT_EQ(out.m_Length, 0);
    EXPECT_EQ(view.GetLine(&out, true, L'\n', false), S_FALSE);
    EXPECT_EQ(view.m_Length, 0);
}

TEST(ScannerTest, GetLineCRLFTakesMixedPairsAsOneEnd)
{
    struct Case { std::wstring text; bool strip; std::wstring steps; };
    const Case cases[] = {
        {L"a\r\nb", true, L"[a]0[b]1"},   {L"a\n\rb", true, L"[a]0[b]1"},        {L"a\n\nb", true, L"[a]0[]0[b]1"},
        {L"a\r\rb", true, L"[a]0[]0[b]1"}, {L"a\r\n", true, L"[a]1"},            {L"a\r\nb", false, L"[a\r\n]0[b]1"},
        {L"\r\n\n", false, L"[\r\n]0[\n]1"}, {L"", true, L"[]F"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Lines(c.text, [&](CREFString& view, CREFString& out) { return view.GetLineCRLF(&out, c.strip, true); }),
                  c.steps);
    // Without advance even the last line is S_OK.
    Owned last(L"abc");
    CREFString out;
    EXPECT_EQ(last.View().GetLineCRLF(&out, true, false), S_OK);
    EXPECT_EQ(Of(out), L"abc");
}

// GetReverseLine, GetLineRight and Crop: the head or the tail at the last separator.
TEST(ScannerTest, ScansFromTheRight)
{
    enum Method { Reverse, Right, CropRight };
    struct Case { Method method; std::wstring text; bool advance, skip, whole; int32_t result;
        std::wstring out, receiver; };
    const Case cases[] = {
        {Reverse, L"/x", true, true, false, E_FAIL, L"", L"/x"},
        {Reverse, L"a/b/c", true, true, false, S_OK, L"a/b", L"c"},
        {Reverse, L"a/b/c", true, false, false, S_OK, L"a/b", L"/c"},
        {Reverse, L"a/b", false, true, false, S_OK, L"a", L"a/b"},
        {Right, L"a/b", true, true, false, S_OK, L"b", L"a"},
        {Right, L"a/b", true, false, false, S_OK, L"/b", L"a/"},
        {Right, L"a/b/", false, true, false, S_OK, L"", L"a/b/"},
        {Right, L"b", true, true, true, S_OK, L"b", L""},
        {Right, L"b", true, true, false, E_FAIL, L"", L"b"},
        {CropRight, L"a/b", true, true, false, S_OK, L"b", L"a"},
        {CropRight, L"x/y/z", true, false, false, S_OK, L"/z", L"x/y/"},
        {CropRight, L"b", true, true, false, E_FAIL, L"", L"b"},
    };
    for (const Case& c : cases) {
        Owned owned(c.text);
        CREFString view = owned.View();
        CREFString out(L"untouched");
        int32_t result = c.method == Reverse ? view.GetReverseLine(&out, L'/', c.advance, c.skip)
                         : c.method == Right ? view.GetLineRight(&out, L'/', c.advance, c.skip, c.whole)
                                             : view.Crop(&out, L'/', c.advance, c.skip);
        SCOPED_TRACE(::testing::PrintToString(c.text) + " method " + std::to_string(c.method));
        EXPECT_EQ(result, c.result);
        EXPECT_EQ(Of(out), c.out);
        EXPECT_EQ(Of(view), c.receiver);
    }
    // An empty view leaves GetLineRight's output alone.
    CREFString empty;
    CREFString out(L"untouched");
    EXPECT_EQ(empty.GetLineRight(&out, L'/', true, true, true), E_FAIL);
    EXPECT_EQ(Of(out), L"untouched");
}

TEST(ScannerTest, SplitStopsAtADelimiterOrAControlCharacter)
{
    struct Case { std::wstring text, delimiters; int stopAtControl; int32_t result; std::wstring left, right; };
    const Case cases[] = {
        {L"ab cd", L" ", 0, S_OK, L"ab", L" cd"},
        {L"abcd", L" ", 0, E_FAIL, L"abcd", L""},
        {L"ab\tcd", L",", 1, S_OK, L"ab", L"\tcd"},
        {L"ab\tcd", L",", 0, E_FAIL, L"ab\tcd", L""},
        {L"ab\tcd", L"", 1, E_FAIL, L"ab\tcd", L""}, // no delimiters: no control test either
        {L",", L",", 0, S_OK, L"", L","},
    };
    for (const Case& c : cases) {
        Owned owned(c.text);
        Owned delimiters(c.delimiters);
        CREFString view = owned.View();
        CREFString left, right;
        EXPECT_EQ(view.Split(&left, &right, delimiters.View(), c.stopAtControl), c.result)
            << ::testing::PrintToString(c.text);
        EXPECT_EQ(Of(left), c.left);
        EXPECT_EQ(Of(right), c.right);
        EXPECT_EQ(Of(view), c.text);
    }
}

TEST(ScannerTest, GetWordGivesTheDelimitersOneBasedPosition)
{
    struct Case { std::wstring text; int32_t result; std::wstring word, receiver; };
    const Case cases[] = {
        {L"ab,cd", 3, L"ab", L",cd"}, // the delimiter isn't skipped
        {L"abcd", 0, L"abcd", L""},   // 0: the word runs to the end
        {L",x", 1, L"", L",x"},
        {L"", E_FAIL, L"", L""},
    };
    Owned delimiters(L",;");
    for (const Case& c : cases) {
        Owned owned(c.text);
        CREFString view = owned.View();
        CREFString word;
        EXPECT_EQ(view.GetWord(&word, true, delimiters.View()), c.result) << ::testing::PrintToString(c.text);
        EXPECT_EQ(Of(word), c.word);
        EXPECT_EQ(Of(view), c.receiver);
    }
}

TEST(ScannerTest, GetFirstWordTokenises)
{
    struct Case { std::wstring text; int32_t result; std::wstring token, rest; };
    const Case cases[] = {
        {L"-12.5e+3 x", S_OK, L"-12.5e+3", L" x"},
        {L"1e5", S_OK, L"1", L"e5"},         // an exponent only after a fraction
        {L"1.5e3", S_OK, L"1.5", L"e3"},     // and only with a sign
        {L"12.x", S_OK, L"12", L".x"},
        {L"-x", E_FAIL, L"", L"-x"},
        {L" a", E_FAIL, L"", L" a"},
        {L"abc_def ghi", S_OK, L"abc_def", L" ghi"},
        {L"_x", S_OK, L"_", L"x"},
        {L",a", S_OK, L",", L"a"},
        {L"\"a b\" c", S_OK, L"a b", L" c"},
        {L"\"\"x", S_OK, L"", L"x"},
        {L"\"abc", S_OK, L"\"abc", L""},   // unclosed: the quote stays
        {L"ab\"c", S_OK, L"b", L"c"},      // a quote behind a word takes its first letter off
        {L",\"x", S_OK, L"", L"x"},        // and behind a mark gives an empty token
        {L"", E_FAIL, L"", L""},
    };
    for (const Case& c : cases) {
        Owned owned(c.text);
        CREFString view = owned.View();
        CREFString token;
        EXPECT_EQ(view.GetFirstWord(&token, true), c.result) << ::testing::PrintToString(c.text);
        EXPECT_EQ(Of(token), c.token) << ::testing::PrintToString(c.text);
        EXPECT_EQ(Of(view), c.rest) << ::testing::PrintToString(c.text);
    }
}

TEST(ScannerTest, GetFirstWordStaysInsideItsView)
{
    // Digits follow in memory but not in the view: the number ends with the view.
    Owned owned(L"78");
    CREFString view(owned.View().m_Buffer, 1);
    CREFString token;
    EXPECT_EQ(view.GetFirstWord(&token, true), S_OK);
    EXPECT_EQ(Of(token), L"7");
    EXPECT_EQ(view.m_Length, 0);

    // Without an output the closing quote isn't consumed.
    Owned quoted(L"ab\"c");
    CREFString rest = quoted.View();
    EXPECT_EQ(rest.GetFirstWord(nullptr, true), S_OK);
    EXPECT_EQ(Of(rest), L"\"c");
}

TEST(ScannerTest, ContainsScansOnceWithoutGoingBack)
{
    struct Case { std::wstring text, needle; int32_t result; };
    const Case cases[] = {
        {L"xab", L"ab", 1},
        {L"ab", L"ab", 1}, // a match at 0 reads as 1 for needles of two or more
        {L"a", L"a", 0},
        {L"xxa", L"a", 2},
        {L"xyab", L"ab", 2},
        {L"aab", L"ab", E_FAIL}, // no second try after a partial match
        {L"xaby", L"ab", 1},
        {L"ab", L"abc", E_FAIL},
        {L"abc", L"", E_FAIL},
        {L"", L"a", E_FAIL},
    };
    for (const Case& c : cases) {
        Owned text(c.text);
        Owned needle(c.needle);
        EXPECT_EQ(text.View().Contains(needle.View()), c.result)
            << ::testing::PrintToString(c.text) << " " << ::testing::PrintToString(c.needle);
    }
    // The place behind the needle reads as 0, whatever memory holds there.
    Owned text(L"xabz");
    Owned longer(L"abz");
    EXPECT_EQ(text.View().Contains(CREFString(longer.View().m_Buffer, 2)), 1);
    // ContainsChar gives a plain index, 0 included.
    Owned set(L",;");
    EXPECT_EQ(Owned(L"a;b,").View().ContainsChar(set.View()), 1);
    EXPECT_EQ(Owned(L",b").View().ContainsChar(set.View()), 0);
    EXPECT_EQ(Owned(L"ab").View().ContainsChar(set.View()), E_FAIL);
}

TEST(ScannerTest, TrimLeftInBothModes)
{
    struct Case { std::wstring text; bool punctuation; int32_t removed; std::wstring rest; };
    const Case cases[] = {
        {L" \t,a", true, 3, L"a"},
        {L" \t,a", false, 2, L",a"},
        {L"\u00FE\u00EF\r\na", false, 4, L"a"}, // the bytes of a misread mark go too
        {L"\x01\x02x", false, 2, L"x"},
        {L"x ", true, 0, L"x "},
    };
    for (const Case& c : cases) {
        Owned owned(c.text);
        CREFString view = owned.View();
        EXPECT_EQ(view.TrimLeft(c.punctuation), c.removed) << ::testing::PrintToString(c.text);
        EXPECT_EQ(Of(view), c.rest);
    }
}

TEST(ScannerTest, CompareIHasThreeResults)
{
    const struct { std::wstring text, other; short prefix; int32_t result; } cases[] = {
        {L"Abc", L"abc", 0, S_OK},
        {L"abcd", L"abc", 0, S_FALSE},
        {L"ABCD", L"abc", 1, S_FALSE},
        {L"abc", L"abcd", 1, E_FAIL},
        {L"abc", L"abcd", 0, S_FALSE}, // a beginning on either side is S_FALSE
        {L"abx", L"abc", 0, E_FAIL},
        {L"a", L"", 0, E_FAIL},
        {L"", L"", 0, E_FAIL}, // two empty strings aren't equal
    };
    for (const auto& c : cases) {
        Owned text(c.text);
        Owned other(c.other);
        EXPECT_EQ(text.View().CompareI(other.View(), c.prefix), c.result)
            << ::testing::PrintToString(c.text) << " " << ::testing::PrintToString(c.other);
    }
}

} // namespace
