// "StringTable": the texts that the application shows for a component, by id. They
// live in stringtable.ini beside _binlinux, one section for each component, so that
// a translation changes a file and no code.
#pragma once
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CStringTable : public CObject<CStringTable>, public IObjectInfoImpl<CStringTable>, public IStringTable {
public:
    static constexpr wchar_t kObjectName[] = L"StringTable";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IStringTable>>;

    // The section of the component named key: item names are the ids, items the texts
    // as strings, in the order of the file. E_FAIL when the file has no such section.
    // Callers of one reading of the file share one table: they read it and no more.
    int32_t get_Table(IString* key, INamedCollection** table) override;
};
