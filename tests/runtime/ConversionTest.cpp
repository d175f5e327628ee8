// Values into strings and strings into values, through the framework's real
// string and variant.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "support/Values.h"

namespace {

using vxtest::Narrow;
using vxtest::Text;
using vxtest::View;

class ConversionTest : public vxtest::ModuleTest {
protected:
    static std::wstring Made(IString* string)
    {
        auto owned = SmartPtr<IString>::Adopt(string);
        EXPECT_TRUE(owned) << "no string was made";
        return Text(owned);
    }
};

TEST_F(ConversionTest, DoublesTakeTheDecimalsTheyNeed)
{
    const struct { double value; short decimals; std::wstring text; } cases[] = {
        {2.50, -1, L"2.5"}, {3.0, -1, L"3"}, {0.1 + 0.2, -1, L"0.3"},
        {1.0 / 3.0, -1, L"0.333333333"}, // nine decimals at most
        {-1.25, -1, L"-1.25"}, {0.0, -1, L"0"}, {2.5, 2, L"2.50"}, {1.25, 0, L"1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Made(ISCreate(c.value, c.decimals)), c.text) << c.value << " with " << c.decimals;
    // The widest double comes out whole, not cut at some buffer's end.
    EXPECT_EQ(Made(ISCreate(1e300, -1)).size(), 301u);
}

TEST_F(ConversionTest, IntegersHexAndNarrowText)
{
    EXPECT_EQ(Made(ISCreate(-42)), L"-42");
    for (auto [value, text] : {std::pair{0xFFu, L"#0000FF"}, {0u, L"#000000"}, {0xFFFFFFu, L"#FFFFFF"},
                               {0x1000000u, L"#1000000"}})
        EXPECT_EQ(Made(ISCreateHex(value)), text);

    const struct { std::string bytes; int length; std::wstring text; } narrows[] = {
        {"Caf\xC3\xA9", 5, L"Caf\u00E9"},
        {"\xE2\x82\xAC", 3, L"\u20AC"},
        {"\xF0\x9F\x98\x80", 4, L"\U0001F600"},
        {"a\xE9", 2, L"a\x29"},     // a lead byte at the end keeps its low six bits
        {"\x80z", 2, std::wstring{L'\0', L'z'}}, // as does a stray continuation byte
        {"\xE2\x82", 2, L"\x82"},   // a cut sequence gives what it has
        {"ab", 1, L"a"},
    };
    for (const auto& n : narrows)
        EXPECT_EQ(Made(ISCreate(n.bytes.data(), n.length)), n.text) << n.bytes;
    EXPECT_EQ(Made(ISCreate(static_cast<const wchar_t*>(nullptr))), L"");
}

TEST_F(ConversionTest, VariantFormats)
{
    using vxtest::Variant;
    const auto colour = Variant(0x11223344);
    const struct { SmartPtr<IVariant> variant; short format; std::wstring text; } cases[] = {
        {Variant(5), 2, L"5.00"},        {Variant(2.75), 1, L"2.8"},     {Variant(0x123456), -16, L"#123456"},
        {colour, -16, L"#11223344"},     {colour, -42, L"00010001"},     {colour, -32, L"00100010"},
        {colour, -22, L"00110011"},      {colour, -2, L"01000100"},      {Variant(L"1.50"), -1, L"1.5"},
        {Variant(L"abc"), 2, L"abc"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Made(ISCreate(c.variant.get(), c.format)), c.text) << "format " << c.format;
    EXPECT_EQ(ISCreate(static_cast<IVariant*>(nullptr), short(-1)), nullptr);
    // A string comes back as the very string held, plain or formatted, even where it is no number.
    auto abc = Variant(L"abc");
    SmartPtr<IString> held;
    abc->get_String(held.Receive());
    EXPECT_TRUE(SameObject(SmartPtr<IString>::Adopt(ISCreate(abc.get())), held));
    EXPECT_TRUE(SameObject(SmartPtr<IString>::Adopt(ISCreate(abc.get(), short(3))), held));
}

TEST_F(ConversionTest, IntegersAndColoursParse)
{
    const struct { std::wstring text; int base; int value; } cases[] = {
        {L"12abc", 10, 12},
        {L"#ff", 10, 255}, // "#" turns any base into 16
        {L"1F", 10, 1},    // letters need a base above 10
        {L"19", 8, 17},    // digits aren't checked against the base
        {L"-42", 10, -42}, {L"-", 10, 0}, {L" 5", 10, 0}, {L"-#5", 10, 0},
        {L"4294967296", 10, 0}, // wraps in 32 bits
        {L"2147483648", 10, int(0x80000000u)},
    };
    for (const auto& c : cases)
        EXPECT_EQ(_IS2Integer(View(c.text), c.base), c.value) << Narrow(c.text);

    const struct { std::wstring text; int base; unsigned int value; } colours[] = {
        {L"#FF0000", 16, 0x0000FFu}, {L"#11223344", 10, 0x00443322u} /* the top byte goes */,
        {L"#00ff00", 10, 0x00FF00u}, {L"255", 10, 0xFF0000u},
    };
    for (const auto& c : colours)
        EXPECT_EQ(_IS2Color(View(c.text), c.base), c.value) << Narrow(c.text);
}

TEST_F(ConversionTest, DoublesParse)
{
    const struct { std::wstring text; double value; } cases[] = {
        {L"", 0.0}, {L"#", 0.0}, {L"#ff", 255.0},
        {L"#FFFFFFFF", -1.0}, // a signed 32-bit value
        {L"1.5", 1.5}, {L".5", 0.5},
        {L"1.5e3", 1.5}, // no exponents
        {L"1.2.3", 1.2},
        {L"0.000000000000000009", 9e-18}, // the eighteenth decimal still counts
        {L"0.0000000000000000009", 0.0},  // the nineteenth doesn't
    };
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(_IS2Double(View(c.text)), c.value) << Narrow(c.text);
    double negativeZero = _IS2Double(CREFString(L"-"));
    EXPECT_EQ(negativeZero, 0.0);
    EXPECT_TRUE(std::signbit(negativeZero));
}

TEST_F(ConversionTest, TheNumberTestTellsTheKind)
{
    const struct { std::wstring text; short kind; } cases[] = {
        {L"", VARIANT_NONE}, {L"-", VARIANT_INTEGER}, {L"123456789", VARIANT_INTEGER},
        {L"1234567890", VARIANT_NONE}, // ten characters could overflow
        {L"-12345678", VARIANT_INTEGER},
        {L"-123456789", VARIANT_NONE}, // the sign counts
        {L"12345678901.5", VARIANT_DOUBLE}, {L"1.5", VARIANT_DOUBLE}, {L".", VARIANT_DOUBLE}, {L"1. ", VARIANT_DOUBLE},
        {L"1.2.3", VARIANT_NONE},
        {L"12 34", VARIANT_INTEGER}, // white space behind digits ends the walk
        {L" 12", VARIANT_NONE},      // and before them ends the number
        {L"x1", VARIANT_NONE}, {L"+1", VARIANT_NONE},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ISNumberKind(View(c.text)), c.kind) << Narrow(c.text);
}

TEST_F(ConversionTest, ConvertMakesTheVariantTheTextAsks)
{
    // number: for numbers; kept: for strings, and the text left after the trim
    const struct { std::wstring text; short type; double number; std::wstring kept; } cases[] = {
        {L"123456789", VARIANT_INTEGER, 123456789, L"123456789"},
        {L"1234567890", VARIANT_NONE, 0, L"1234567890"},
        {L"1.5", VARIANT_DOUBLE, 1.5, L"1.5"},
        {L"12 34", VARIANT_INTEGER, 12, L"12 34"},
        {L"  42", VARIANT_INTEGER, 42, L"42"},
        {L"\t-", VARIANT_INTEGER, 0, L"-"},
        {L"  ", VARIANT_NONE, 0, L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(Narrow(c.text));
        CREFString view = View(c.text);
        auto variant = SmartPtr<IVariant>::Adopt(IVCreateConvert(view));
        ASSERT_TRUE(variant);
        EXPECT_EQ(std::wstring(view.m_Buffer, size_t(view.m_Length)), c.kept);
        EXPECT_EQ(variant->get_Type(), c.type);
        if (c.type == VARIANT_NONE) {
            ASSERT_TRUE(variant->IsString());
            SmartPtr<IString> text;
            ASSERT_GE(variant->get_String(text.Receive()), 0);
            EXPECT_EQ(Text(text), c.kept);
        } else {
            EXPECT_DOUBLE_EQ(variant->get_Double(), c.number);
        }
    }
}

TEST(SwprintfTest, NeverWritesOutsideItsBuffer)
{
    wchar_t buffer[10];
    std::fill(std::begin(buffer), std::end(buffer), L'#');
    EXPECT_EQ(_swprintf(buffer, 8, L"%ls", L"abcdefghij"), -1);
    EXPECT_EQ(std::wstring(buffer), L"abcdefg"); // cut, and terminated inside
    EXPECT_EQ(buffer[8], L'#');
    EXPECT_EQ(buffer[9], L'#');

    EXPECT_EQ(_swprintf(buffer, 8, L"%d", 42), 2);
    EXPECT_EQ(std::wstring(buffer), L"42");

    buffer[0] = L'#';
    EXPECT_EQ(_swprintf(buffer, 0, L"%d", 42), -1);
    EXPECT_EQ(buffer[0], L'#');
}

} // namespace
