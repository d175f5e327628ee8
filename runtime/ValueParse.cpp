// Text read as numbers, colours and variants. Nothing here fails: text that
// doesn't parse gives 0 or what was read up to there.
#include <cstdint>
#include <cwctype>

#include "runtime/SmartPtr.h"
#include "runtime/ValueConversion.h"

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// The upper case of the C locale: only ASCII letters change.
wchar_t UpperC(wchar_t c) { return (c >= L'a' && c <= L'z') ? wchar_t(c - 32) : c; }

} // namespace

int _IS2Integer(CREFString text, int base)
{
    if (text.IsEmpty() || !text.m_Buffer)
        return 0;
    int32_t i = 0;
    uint32_t sign = 1;
    switch (text.m_Buffer[0]) {
    case L'-':
        sign = uint32_t(-1);
        i = 1;
        break;
    case L'+':
        i = 1;
        break;
    case L'#':
        base = 16;
        i = 1;
        break;
    default:
        break;
    }
    // Digits count in any base, unchecked against it; letters only in bases 11 to
    // 16. The value wraps in 32 bits without notice.
    bool letters = base >= 11 && base <= 16;
    uint32_t value = 0;
    for (; i < text.m_Length; ++i) {
        wchar_t c = UpperC(text.m_Buffer[i]);
        uint32_t digit = 0;
        if (IsDigit(c))
            digit = uint32_t(c - L'0');
        else if (letters && c >= L'A' && c <= L'F')
            digit = uint32_t(c - L'A' + 10);
        else
            break;
        value = value * uint32_t(base) + digit;
    }
    return int(value * sign);
}

unsigned int _IS2Color(CREFString text, int base)
{
    // Text has red first ("#RRGGBB"); a colour keeps red in its low byte.
    uint32_t value = uint32_t(_IS2Integer(text, base));
    return ((value & 0xFFu) << 16) | (value & 0xFF00u) | ((value >> 16) & 0xFFu);
}

double _IS2Double(CREFString text)
{
    if (text.IsEmpty() || !text.m_Buffer)
        return 0.0;
    if (text.m_Buffer[0] == L'#')
        return double(_IS2Integer(text, 16));
    int32_t i = 0;
    double sign = 1.0;
    if (text.m_Buffer[0] == L'-') {
        sign = -1.0;
        i = 1;
    } else if (text.m_Buffer[0] == L'+') {
        i = 1;
    }
    uint64_t whole = 0;
    for (; i < text.m_Length && IsDigit(text.m_Buffer[i]); ++i)
        whole = whole * 10u + uint64_t(text.m_Buffer[i] - L'0');
    uint64_t numerator = 0;
    uint64_t denominator = 1;
    if (i < text.m_Length && text.m_Buffer[i] == L'.') {
        // The fraction ends where its denominator would no longer fit in 18 digits.
        for (++i; i < text.m_Length && IsDigit(text.m_Buffer[i]); ++i) {
            numerator = numerator * 10u + uint64_t(text.m_Buffer[i] - L'0');
            denominator *= 10u;
            if (denominator > 999999999999999999ull)
                break;
        }
    }
    return sign * (double(int64_t(whole)) + double(int64_t(numerator)) / double(int64_t(denominator)));
}

short ISNumberKind(const tagREFString& text)
{
    if (text.m_Length < 1 || !text.m_Buffer)
        return VARIANT_NONE;
    int32_t i = text.m_Buffer[0] == L'-' ? 1 : 0;
    bool digits = false;
    bool point = false;
    for (; i < text.m_Length; ++i) {
        wchar_t c = text.m_Buffer[i];
        if (IsDigit(c)) {
            digits = true;
        } else if (std::iswspace(wint_t(c))) {
            if (!digits)
                return VARIANT_NONE;
            break;
        } else if (c == L'.' && !point) {
            point = true;
        } else {
            return VARIANT_NONE;
        }
    }
    if (point)
        return VARIANT_DOUBLE;
    // Ten characters or more could overflow 32 bits: such a text stays text.
    return text.m_Length > 9 ? VARIANT_NONE : VARIANT_INTEGER;
}

IVariant* IVCreateConvert(CREFString& text)
{
    text.TrimLeft(false);
    IVariant* variant = CREFString::CreateVariant();
    if (!variant)
        return nullptr;
    switch (ISNumberKind(text)) {
    case VARIANT_DOUBLE:
        variant->put_Double(_IS2Double(text));
        break;
    case VARIANT_INTEGER:
        variant->put_Integer(_IS2Integer(text, 10));
        break;
    default: {
        auto string = SmartPtr<IString>::Adopt(ISCreate(text));
        variant->put_String(string);
        break;
    }
    }
    return variant;
}

int HexDigitValue(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'A' && c <= L'F')
        return c - L'A' + 10;
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    return -1;
}
