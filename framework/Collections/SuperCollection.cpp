#include "framework/Collections/SuperCollection.h"

int32_t CSuperCollection::Clear() { return CollectionClear(); }

// Any object may be held: the check only takes its IUnknown face.
int32_t CSuperCollection::VerifyInterface(IUnknown* item, IUnknown** verified)
{
    if (!verified)
        return E_POINTER;
    *verified = nullptr;
    if (!item)
        return E_FAIL;
    return SUCCEEDED(item->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(verified))) && *verified ? S_OK : E_FAIL;
}
