#include "runtime/UTF8Lenient.h"

#include <cstdint>

size_t UTF8DecodeLenient(const unsigned char* bytes, size_t remaining, wchar_t* character)
{
    unsigned lead = bytes[0];
    if (lead < 0x80) {
        *character = wchar_t(lead);
        return 1;
    }
    // A stray continuation byte, or a lead byte with nothing behind it, keeps its low bits.
    if ((lead & 0xC0) != 0xC0 || remaining < 2) {
        *character = wchar_t(lead & 0x3F);
        return 1;
    }
    // Each leading one bit of the lead byte asks for one more byte, whatever that byte is.
    uint32_t value = 0;
    uint32_t mask = 0x3F;
    unsigned shifted = lead;
    size_t taken = 1;
    while ((shifted & 0xC0) == 0xC0 && taken < remaining) {
        value = (value << 6) | (bytes[taken] & 0x3Fu);
        mask >>= 1;
        shifted = (shifted << 1) & 0xFFu;
        ++taken;
    }
    unsigned shift = unsigned(6 * (taken - 1));
    if (mask != 0 && shift < 32)
        value |= (lead & mask) << shift;
    *character = wchar_t(value);
    return taken;
}
