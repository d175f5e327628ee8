// The number of a collection's items, and their names in order, as several suites compare them.
#pragma once
#include <string>
#include <vector>

#include "support/Fixture.h"

namespace vxtest {

// How many items any collection holds.
inline int Count(ISimpleCollection* collection)
{
    int count = -1;
    collection->get_Count(&count);
    return count;
}

inline std::vector<std::wstring> ItemNames(IUnknown* object)
{
    std::vector<std::wstring> names;
    auto collection = QueryAs<INamedCollection>(object);
    for (int i = 0, count = collection ? Count(collection) : 0; i < count; ++i) {
        SmartPtr<IString> name;
        collection->get_ItemName(i, name.Receive());
        names.push_back(Text(name));
    }
    return names;
}

} // namespace vxtest
