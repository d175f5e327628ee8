// The names of a named collection's items, in order, as several suites compare them.
#pragma once
#include <string>
#include <vector>

#include "support/Fixture.h"

namespace vxtest {

inline std::vector<std::wstring> ItemNames(IUnknown* object)
{
    std::vector<std::wstring> names;
    auto collection = QueryAs<INamedCollection>(object);
    int count = 0;
    if (collection)
        collection->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        collection->get_ItemName(i, name.Receive());
        names.push_back(Text(name));
    }
    return names;
}

} // namespace vxtest
