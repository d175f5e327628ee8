#include "persistence/FileNameUTF8.h"

#include <cstdint>

namespace {

// Bytes a character takes, and its lead bits.
struct Width {
    int m_Bytes;
    unsigned m_Lead;
};

Width WidthOf(int32_t c)
{
    if (c < 128)
        return {1, 0};
    if (c < 2047)
        return {2, 0xC0};
    if (c < 65535)
        return {3, 0xE0};
    return {4, 0xF0};
}

} // namespace

void FileNameToUTF8(tagREFString name, char (&path)[kFileNameBytes])
{
    int position = 0;
    for (int32_t i = 0; i < name.m_Length && name.m_Buffer; ++i) {
        int32_t c = int32_t(name.m_Buffer[i]);
        Width width = WidthOf(c);
        // The last byte of the character must still land within the 254 bytes of room.
        if (position + width.m_Bytes > kFileNameBytes - 1)
            break;
        if (width.m_Bytes == 1) {
            path[position++] = char(c & 0xFF);
            continue;
        }
        uint32_t rest = uint32_t(c);
        for (int k = width.m_Bytes - 1; k > 0; --k) {
            path[position + k] = char(0x80 | (rest & 0x3F));
            rest >>= 6;
        }
        path[position] = char((width.m_Lead | rest) & 0xFF);
        position += width.m_Bytes;
    }
    path[position] = '\0';
}
