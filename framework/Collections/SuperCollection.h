// The framework's general collection: named items of any kind, the same list that
// songs and Bibles keep their children in, so a name is found here as it is there.
#pragma once
#include "persistence/NamedCollection.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"

class CSuperCollection : public CObject<CSuperCollection>,
                         public IObjectInfoImpl<CSuperCollection>,
                         public INamedCollectionImpl<CSuperCollection, ISuperCollection, IUnknown> {
public:
    using Collection = INamedCollectionImpl<CSuperCollection, ISuperCollection, IUnknown>;
    static constexpr wchar_t kObjectName[] = L"SuperCollection";
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Collection>>;

    int32_t Clear() override;
    int32_t VerifyInterface(IUnknown* item, IUnknown** verified) override;
};
