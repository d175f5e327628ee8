#include "persistence/TextDecode.h"

#include <cstdint>
#include <cstring>

#include "persistence/LargeBuffer.h"
#include "runtime/UTF8Lenient.h"

static_assert(sizeof(wchar_t) == 4, "wide text holds one code point per element");

wchar_t* TextDecode16Bit(const unsigned char* bytes, size_t count, unsigned long* size)
{
    size_t units = count / 2;
    wchar_t* text = new wchar_t[units];
    for (size_t k = 1; k < units; ++k) {
        uint16_t unit = uint16_t(bytes[2 * k] | (unsigned(bytes[2 * k + 1]) << 8));
        // Units from 0x8000 on stay negative, as every reader of these buffers has always had them.
        text[k - 1] = wchar_t(int16_t(unit));
    }
    if (units > 0)
        text[units - 1] = 0;
    *size = units;
    return text;
}

wchar_t* TextDecodeBytes(const unsigned char* bytes, size_t count, unsigned long* size)
{
    wchar_t* text = new wchar_t[count + 1];
    for (size_t k = 0; k < count; ++k)
        text[k] = wchar_t(bytes[k]);
    text[count] = 0;
    *size = count;
    return text;
}

wchar_t* TextDecodeUTF8(const unsigned char* bytes, size_t count, unsigned long* size)
{
    wchar_t* text = new wchar_t[count + 10];
    LargeBufferAdvise(text, (count + 10) * sizeof(wchar_t));
    size_t characters = 0;
    size_t i = 0;
    while (i < count) {
        // Bible texts are mostly ASCII: eight such bytes at a time, a byte a character.
        while (count - i >= 8) {
            uint64_t eight;
            std::memcpy(&eight, bytes + i, sizeof eight);
            if (eight & 0x8080808080808080ull)
                break;
            for (size_t k = 0; k < 8; ++k)
                text[characters + k] = wchar_t(bytes[i + k]);
            characters += 8;
            i += 8;
        }
        if (i >= count)
            break;
        if (bytes[i] < 0x80) {
            text[characters++] = wchar_t(bytes[i++]);
            continue;
        }
        i += UTF8DecodeLenient(bytes + i, count - i, &text[characters]);
        ++characters;
    }
    text[characters] = 0;
    *size = characters;
    return text;
}
