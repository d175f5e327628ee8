#include "runtime/IID.h"

const IID IID_NULL = {{0, 0, 0, 0}};
// 00000000-0000-0000-C000-000000000046 in memory order.
const IID IID_IUnknown = {{0, 0, 0x000000C0u, 0x46000000u}};

#define VX_IID(name) constinit const IID IID_##name = iid_detail::Pack(#name);
#include "runtime/IIDList.h"
#undef VX_IID

namespace {

#define VX_IID(name) {&IID_##name, #name},
const IIDTableEntry kTable[] = {
#include "runtime/IIDList.h"
};
#undef VX_IID

} // namespace

IID __IIDOfc(const char* name)
{
    return iid_detail::Pack(name);
}

const IIDTableEntry* IIDTable(int* count)
{
    *count = int(sizeof(kTable) / sizeof(kTable[0]));
    return kTable;
}
