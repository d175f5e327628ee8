// Interface identifiers. Every module computes them from the interfaces' names as it is
// built, so two modules built apart agree without a shared table, and a module that
// starts has nothing to work out or write before its first call.
#pragma once
#include <cstddef>
#include <cstdint>

struct IID {
    uint32_t m_Data[4];
};

inline bool operator==(const IID& a, const IID& b)
{
    return a.m_Data[0] == b.m_Data[0] && a.m_Data[1] == b.m_Data[1] && a.m_Data[2] == b.m_Data[2] &&
           a.m_Data[3] == b.m_Data[3];
}

namespace iid_detail {

// Five-bit code of one character; case makes no difference.
constexpr uint32_t CharacterCode(signed char c)
{
    if (c >= 'A' && c <= 'Z')
        return uint32_t(c - 64);
    if (c >= 'a' && c <= 'z')
        return uint32_t(c - 96);
    if (c >= '0' && c <= '4')
        return uint32_t(c - 20);
    return 27;
}

constexpr IID Pack(const char* name)
{
    IID result = {{0, 0, 0, 0}};
    for (size_t i = 0; i < 25 && name[i] != '\0'; ++i) {
        // A code of 32 (the digit "4") is six bits wide: its top bit is ORed into
        // the next character's field, never added.
        uint64_t code = CharacterCode(static_cast<signed char>(name[i]));
        size_t bit = 5 * i;
        uint64_t shifted = code << (bit % 32);
        result.m_Data[bit / 32] |= uint32_t(shifted);
        if ((shifted >> 32) != 0 && bit / 32 + 1 < 4)
            result.m_Data[bit / 32 + 1] |= uint32_t(shifted >> 32);
    }
    return result;
}

} // namespace iid_detail

// Packs the first 25 characters of a name, five bits each, into 128 bits.
IID __IIDOfc(const char* name);

extern const IID IID_NULL;
extern const IID IID_IUnknown;

#define VX_IID(name) extern const IID IID_##name;
#include "runtime/IIDList.h"
#undef VX_IID

// Every computed identifier with its name, in table order (for checks and tools).
struct IIDTableEntry {
    const IID* m_Iid;
    const char* m_Name;
};
const IIDTableEntry* IIDTable(int* count);
