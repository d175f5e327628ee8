// The collection of all components of the process: one record per component, in
// the order of the component table. There is one collection per process; every
// module it opens is handed this collection.
#pragma once
#include <vector>

#include "framework/CollectionsEx/ComponentString.h"

class CGlobalComponentCollection : public CObject<CGlobalComponentCollection>,
                                   public IObjectInfoImpl<CGlobalComponentCollection>,
                                   public IComponentCollection {
public:
    static constexpr wchar_t kObjectName[] = L"GlobalComponentCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IComponentCollection>>;

    // The creation function: hands out the one collection of the process.
    static int32_t CreateShared(void* outer, IID* iid, void** object);

    int32_t FinalConstruct() override;
    void FinalRelease() override;

    int32_t get_Count(int* count) override;
    int32_t get_Item(int index, IUnknown** item) override;
    int32_t get_Index(IUnknown* key, int* index) override;
    int32_t CreateObject(tagREFString name, IID* iid, void** out) override;

private:
    int Find(tagREFString name);

    std::vector<SmartPtr<IComponentString>> m_Records;
};
