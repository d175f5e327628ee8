#include "runtime/IID.h"

#include <cstring>

const IID IID_NULL = {{0, 0, 0, 0}};
// 00000000-0000-0000-C000-000000000046 in memory order.
const IID IID_IUnknown = {{0, 0, 0x000000C0u, 0x46000000u}};

#define VX_IID(name) IID IID_##name;
#include "runtime/IIDList.h"
#undef VX_IID

namespace {

// Five-bit code of one character; case makes no difference.
uint32_t CharacterCode(signed char c)
{
    if (c >= 'A' && c <= 'Z')
        return uint32_t(c - 64);
    if (c >= 'a' && c <= 'z')
        return uint32_t(c - 96);
    if (c >= '0' && c <= '4')
        return uint32_t(c - 20);
    return 27;
}

#define VX_IID(name) {&IID_##name, #name},
const IIDTableEntry kTable[] = {
#include "runtime/IIDList.h"
};
#undef VX_IID

// The identifiers must stand before any other code of the module runs.
__attribute__((constructor(101))) void ComputeIdentifiers()
{
    for (const IIDTableEntry& entry : kTable)
        *const_cast<IID*>(entry.m_Iid) = __IIDOfc(entry.m_Name);
}

} // namespace

IID __IIDOfc(const char* name)
{
    IID result = IID_NULL;
    size_t length = std::strlen(name);
    size_t used = length < 25 ? length : 25;
    for (size_t i = 0; i < used; ++i) {
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

const IIDTableEntry* IIDTable(int* count)
{
    *count = int(sizeof(kTable) / sizeof(kTable[0]));
    return kTable;
}
