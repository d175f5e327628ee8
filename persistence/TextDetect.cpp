#include "persistence/TextDetect.h"

#include <algorithm>
#include <cstdint>

#include "persistence/FileBuffer.h"

namespace {

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// A byte order mark in either order among the first nine positions: editors and
// older saves put a few bytes ahead of it.
bool HasMarkNearStart(const unsigned char* bytes, size_t count)
{
    size_t last = std::min<size_t>(count, 8);
    for (size_t i = 0; i <= last && i + 1 < count; ++i) {
        if ((bytes[i] == 0xFE && bytes[i + 1] == 0xFF) || (bytes[i] == 0xFF && bytes[i + 1] == 0xFE))
            return true;
    }
    return false;
}

// Latin text saved as 16-bit units without a mark has zero high bytes.
bool HasZeroHighBytes(const unsigned char* bytes, size_t count)
{
    size_t limit = std::min<size_t>(count, 8);
    for (size_t i = 1; i < limit; i += 2) {
        if (bytes[i] != 0)
            return false;
    }
    return true;
}

// Length of the valid character at bytes[0], or 0. remaining counts bytes[0] too.
size_t ValidCharacterLength(const unsigned char* bytes, size_t remaining)
{
    unsigned lead = bytes[0];
    if (lead <= 0x7F)
        return 1;
    if (lead >= 0xC0 && lead <= 0xDF) {
        if (remaining < 2 || !IsContinuation(bytes[1]))
            return 0;
        uint32_t value = ((lead & 0x1Fu) << 6) | (bytes[1] & 0x3Fu);
        return value >= 0x80 && value <= 0x7FE ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        if (remaining < 3 || !IsContinuation(bytes[1]) || !IsContinuation(bytes[2]))
            return 0;
        uint32_t value = ((lead & 0x0Fu) << 12) | ((bytes[1] & 0x3Fu) << 6) | (bytes[2] & 0x3Fu);
        return value >= 0x800 && !(value >= 0xD800 && value <= 0xDFFF) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF7) {
        // One byte more than the character needs must remain.
        if (remaining < 5 || !IsContinuation(bytes[1]) || !IsContinuation(bytes[2]) || !IsContinuation(bytes[3]))
            return 0;
        uint32_t value = ((lead & 0x07u) << 18) | ((bytes[1] & 0x3Fu) << 12) | ((bytes[2] & 0x3Fu) << 6) |
                         (bytes[3] & 0x3Fu);
        return value >= 0x10000 && value <= 0x10FFFF ? 4 : 0;
    }
    return 0;
}

} // namespace

bool TextIsValidUTF8(const unsigned char* bytes, size_t count)
{
    size_t i = 0;
    while (i < count) {
        size_t length = ValidCharacterLength(bytes + i, count - i);
        if (length == 0)
            return false;
        i += length;
    }
    return true;
}

TextForm TextDetectForm(const unsigned char* bytes, size_t count, short mode)
{
    if (HasMarkNearStart(bytes, count) || count < 2 || HasZeroHighBytes(bytes, count))
        return TextForm::Wide16;
    if (mode >= FILELOAD_TEXTCHECK && !TextIsValidUTF8(bytes, count))
        return TextForm::Bytes;
    return TextForm::UTF8;
}
