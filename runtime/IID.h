// Interface identifiers. Every module computes them from the interfaces' names
// when it is loaded, so two modules built apart agree without a shared table.
#pragma once
#include <cstdint>

struct IID {
    uint32_t m_Data[4];
};

inline bool operator==(const IID& a, const IID& b)
{
    return a.m_Data[0] == b.m_Data[0] && a.m_Data[1] == b.m_Data[1] && a.m_Data[2] == b.m_Data[2] &&
           a.m_Data[3] == b.m_Data[3];
}

// Packs the first 25 characters of a name, five bits each, into 128 bits.
IID __IIDOfc(const char* name);

extern const IID IID_NULL;
extern const IID IID_IUnknown;

#define VX_IID(name) extern IID IID_##name;
#include "runtime/IIDList.h"
#undef VX_IID

// Every computed identifier with its name, in table order (for checks and tools).
struct IIDTableEntry {
    const IID* m_Iid;
    const char* m_Name;
};
const IIDTableEntry* IIDTable(int* count);
