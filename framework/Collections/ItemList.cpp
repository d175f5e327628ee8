#include "framework/Collections/ItemList.h"

int32_t CItemList::Count(int* count) const
{
    if (!count)
        return E_POINTER;
    *count = Size();
    return S_OK;
}

int32_t CItemList::Item(int index, IUnknown** item) const
{
    if (!item)
        return E_POINTER;
    if (index < 0 || index >= Size())
        return E_INVALIDARG;
    *item = m_Items[size_t(index)].Copy();
    return S_OK;
}

int32_t CItemList::Add(IUnknown* item)
{
    // Readers ask every item for an interface; a null one would be a trap.
    if (!item)
        return E_POINTER;
    m_Items.emplace_back(item);
    return S_OK;
}
