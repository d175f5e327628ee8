// The items of a plain collection, in the order they were added, each held with a
// reference. The simple and the string collection keep theirs here.
#pragma once
#include <vector>

#include "runtime/VXCore.h"

class CItemList {
public:
    int32_t Count(int* count) const;
    // A new reference to the item; negative past the end.
    int32_t Item(int index, IUnknown** item) const;
    int32_t Add(IUnknown* item);
    void Clear() { m_Items.clear(); }
    int Size() const { return int(m_Items.size()); }
    IUnknown* At(int index) const { return m_Items[size_t(index)].get(); }

private:
    std::vector<SmartPtr<IUnknown>> m_Items;
};
