// Values made into framework strings. Every form yields a new string with one
// reference for the caller.
#include <cmath>
#include <cstdint>
#include <cwchar>
#include <vector>

#include "runtime/SmartPtr.h"
#include "runtime/UTF8Lenient.h"
#include "runtime/ValueConversion.h"

namespace {

// Room for the widest double printed with no decimals: 309 digits, a sign, a point
// and the terminator, with some to spare.
constexpr size_t kDoubleDigits = 330;

// The fraction of a number that isn't negative, as the math library's modf gives it:
// a module shouldn't load that library at every start for this one call.
double FractionOf(double x)
{
    // From 2^52 up every double is whole; NaN stays NaN.
    if (!(x < 4503599627370496.0))
        return x != x ? x : 0.0;
    return x - double(static_cast<int64_t>(x));
}

// As many decimals as the value needs, nine at most: a fraction this close to 0
// or to 1 is taken as the end of the number.
int DecimalsNeeded(double value)
{
    double factor = 1.0;
    int count = 0;
    while (count < 9) {
        double fraction = FractionOf(std::fabs(value) * factor);
        if (fraction < 1e-8 || fraction > 0.9999999)
            break;
        ++count;
        factor *= 10.0;
    }
    return count;
}

// One byte of a number as eight characters "0" and "1", the highest bit first.
// The format names the byte.
IString* ByteAsBits(int value, short format)
{
    int shift = 0;
    switch (format) {
    case -42:
    case -24:
        shift = 24;
        break;
    case -32:
    case -23:
        shift = 16;
        break;
    case -22:
        shift = 8;
        break;
    default:
        break;
    }
    unsigned int byte = (static_cast<unsigned int>(value) >> shift) & 0xFFu;
    wchar_t bits[8];
    for (int i = 0; i < 8; ++i)
        bits[i] = (byte & (0x80u >> i)) ? L'1' : L'0';
    return ISCreate(CREFString(bits, 8));
}

} // namespace

IString* ISCreate(const wchar_t* text)
{
    ICreatableString* string = CREFString::CreateString();
    if (string && text)
        string->Clone(CREFString(text));
    return string;
}

IString* ISCreate(const tagREFString& text)
{
    ICreatableString* string = CREFString::CreateString();
    if (string)
        string->Clone(text);
    return string;
}

IString* ISCreate(const char* text, int length)
{
    ICreatableString* string = CREFString::CreateString();
    if (!string || !text || length <= 0)
        return string;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    size_t remaining = size_t(length);
    while (remaining > 0) {
        wchar_t character = 0;
        size_t taken = UTF8DecodeLenient(bytes, remaining, &character);
        string->Append(CREFString(&character, 1));
        bytes += taken;
        remaining -= taken;
    }
    return string;
}

IString* ISCreate(int value)
{
    wchar_t text[16];
    _swprintf(text, 16, L"%i", value);
    return ISCreate(text);
}

IString* ISCreate(double value, short decimals)
{
    int count = decimals < 0 ? DecimalsNeeded(value) : decimals;
    wchar_t format[16];
    _swprintf(format, 16, L"%%.%df", count);
    std::vector<wchar_t> text(kDoubleDigits + size_t(count));
    _swprintf(text.data(), text.size(), format, value);
    return ISCreate(text.data());
}

IString* ISCreateHex(unsigned int value)
{
    wchar_t text[16];
    _swprintf(text, 16, value > 0xFFFFFFu ? L"#%X" : L"#%06X", value);
    return ISCreate(text);
}

IString* ISCreate(IVariant* variant)
{
    if (!variant)
        return nullptr;
    if (variant->IsString()) {
        IString* text = nullptr;
        variant->get_String(&text);
        return text;
    }
    if (variant->get_Type() != VARIANT_NONE)
        return ISCreate(variant, short(-1));
    // An object reads as its name.
    SmartPtr<IUnknown> object;
    variant->get_Object(object.Receive());
    if (auto info = QueryAs<IObjectInfo>(object.get())) {
        tagREFString name{0, nullptr};
        if (info->GetName(0, &name) >= 0)
            return ISCreate(name);
    }
    return ISCreate(L"");
}

IString* ISCreate(IVariant* variant, short format)
{
    if (!variant)
        return nullptr;
    if (format == -16)
        return ISCreateHex(static_cast<unsigned int>(variant->get_Integer()));
    if (format < -1)
        return ByteAsBits(variant->get_Integer(), format);
    short kind = 0;
    if (variant->IsString()) {
        // A text decides its own kind; one that is no number comes back as it is.
        SmartPtr<IString> text;
        variant->get_String(text.Receive());
        kind = ISNumberKind(CREFString(text.get()));
        if (kind == VARIANT_NONE)
            return text.Detach();
    } else {
        kind = variant->get_Type();
    }
    if (kind == VARIANT_INTEGER && (format == 0 || format == -1))
        return ISCreate(variant->get_Integer());
    return ISCreate(variant->get_Double(), format);
}
