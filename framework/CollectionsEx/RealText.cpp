#include "framework/CollectionsEx/RealText.h"

#include <locale.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

locale_t Classic()
{
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", locale_t(0));
    return classic;
}

// The fewest significant digits that read back as value, and its decimal exponent.
void ShortestDigits(double value, std::string* digits, int* exponent)
{
    char text[40];
    for (int precision = 1; precision <= 17; ++precision) {
        std::snprintf(text, sizeof(text), "%.*e", precision - 1, value);
        if (precision == 17 || strtod_l(text, nullptr, Classic()) == value)
            break;
    }
    // "d.ddde±xx": the digits without the point, then the exponent.
    const char* e = std::strchr(text, 'e');
    digits->clear();
    for (const char* c = text; c < e; ++c)
        if (*c >= '0' && *c <= '9')
            digits->push_back(*c);
    *exponent = std::atoi(e + 1);
}

} // namespace

std::string RealToText(double value)
{
    if (std::isnan(value))
        return std::signbit(value) ? "-nan" : "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    std::string sign = std::signbit(value) ? "-" : "";
    std::string digits;
    int exponent = 0;
    ShortestDigits(std::fabs(value), &digits, &exponent);
    int count = int(digits.size());

    std::string plain;
    if (exponent >= count - 1) {
        // A whole number is written plain with all its digits, as printf does.
        char whole[330];
        std::snprintf(whole, sizeof(whole), "%.0f", std::fabs(value));
        plain = whole;
    } else if (exponent >= 0)
        plain = digits.substr(0, size_t(exponent + 1)) + "." + digits.substr(size_t(exponent + 1));
    else
        plain = "0." + std::string(size_t(-exponent - 1), '0') + digits;

    // A double's exponent has three digits at most; the room for any int keeps the
    // compiler from warning of a cut.
    char power[16];
    std::snprintf(power, sizeof(power), "e%c%02d", exponent < 0 ? '-' : '+', exponent < 0 ? -exponent : exponent);
    std::string scaled = digits.substr(0, 1) + (count > 1 ? "." + digits.substr(1) : "") + power;
    return sign + (scaled.size() < plain.size() ? scaled : plain);
}

bool RealFromText(const char* text, size_t length, double* value)
{
    std::string whole(text, length);
    // What the folder stream writes: a minus, digits, a point, an exponent, or the words
    // for infinity and not-a-number; no blanks, leading plus or hexadecimal form.
    if (whole.empty() || whole[0] == '+' || whole.find_first_of(" \t\n\r\f\vxX") != std::string::npos ||
        whole.find('\0') != std::string::npos || !Classic())
        return false;
    char* stop = nullptr;
    errno = 0;
    double read = strtod_l(whole.c_str(), &stop, Classic());
    if (stop != whole.c_str() + whole.size() || errno == ERANGE)
        return false;
    *value = read;
    return true;
}
