// The framework's plain list: items by position, appended one by one.
#pragma once
#include "framework/Collections/ItemList.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"

class CSimpleCollection : public CObject<CSimpleCollection>,
                          public IObjectInfoImpl<CSimpleCollection>,
                          public ICreatableSimpleCollection,
                          public ISimpleCollection {
public:
    static constexpr wchar_t kObjectName[] = L"SimpleCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<ICreatableSimpleCollection>, Entry<ISimpleCollection>>;

    int32_t get_Count(int* count) override { return m_Items.Count(count); }
    int32_t get_Item(int index, IUnknown** item) override { return m_Items.Item(index, item); }
    int32_t Add(IUnknown* item) override { return m_Items.Add(item); }

private:
    CItemList m_Items;
};
