// A collection class of the tests' own on the named collection template: it counts
// its owner's Lock and Unlock, and lets a test read the mixin's fields.
#pragma once
#include <string>
#include <vector>

#include "persistence/NamedCollection.h"
#include "runtime/ObjectInfo.h"
#include "support/Collections.h"

template <class ItemI>
class CProbeCollection : public CObject<CProbeCollection<ItemI>>,
                         public IObjectInfoImpl<CProbeCollection<ItemI>>,
                         public INamedCollectionImpl<CProbeCollection<ItemI>, ISuperCollection, ItemI> {
public:
    using Collection = INamedCollectionImpl<CProbeCollection<ItemI>, ISuperCollection, ItemI>;
    static constexpr wchar_t kObjectName[] = L"ProbeCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Collection>>;

    void Lock() override { ++m_Locks; }
    void Unlock() override { ++m_Unlocks; }
    int32_t Clear() override { return this->CollectionClear(); }
    int32_t VerifyInterface(IUnknown* item, ItemI** verified) override
    {
        *verified = nullptr;
        return item && SUCCEEDED(item->QueryInterface(ItemI::Iid(), reinterpret_cast<void**>(verified))) ? S_OK
                                                                                                         : E_FAIL;
    }

    int m_Locks = 0;
    int m_Unlocks = 0;
};

// The collection's face and its class, for reading fields.
template <class ItemI> struct Probe {
    SmartPtr<ISuperCollection> face;
    CProbeCollection<ItemI>* self = nullptr;

    ISuperCollection* operator->() const { return face.get(); }
};

template <class ItemI = IUnknown> Probe<ItemI> MakeProbe()
{
    IID iid = ISuperCollection::Iid();
    void* out = nullptr;
    CObject<CProbeCollection<ItemI>>::_CreateInstance(nullptr, &iid, &out);
    Probe<ItemI> probe;
    probe.face = SmartPtr<ISuperCollection>::Adopt(static_cast<ISuperCollection*>(out));
    using Collection = typename CProbeCollection<ItemI>::Collection;
    probe.self = static_cast<CProbeCollection<ItemI>*>(static_cast<Collection*>(probe.face.get()));
    return probe;
}

// Adds one string item under each name.
inline void AddNamed(ISuperCollection* collection, const std::vector<std::wstring>& names)
{
    for (const std::wstring& name : names)
        ASSERT_EQ(collection->Add(vxtest::Str(name), vxtest::Str(L"item " + name), nullptr, 0), S_OK);
}

// The names in order; an unnamed item reads as "-".
inline std::vector<std::wstring> Names(ISuperCollection* collection)
{
    std::vector<std::wstring> names;
    for (int i = 0; i < vxtest::Count(collection); ++i) {
        SmartPtr<IString> name;
        names.push_back(SUCCEEDED(collection->get_ItemName(i, name.Receive())) ? vxtest::Text(name) : L"-");
    }
    return names;
}
