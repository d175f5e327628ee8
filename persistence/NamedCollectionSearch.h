// The named collection's order: the lookup by name, number or object, and Sort
// with the two comparisons it offers.
#pragma once
#include <algorithm>
#include <cwctype>

#include "persistence/NamedCollection.h"

// Names are matched with only the letters A to Z folded: the lookups of songs and
// Bibles rest on this, and no other character is touched.
inline wchar_t COLLECTIONFoldASCII(wchar_t c) { return (c >= L'A' && c <= L'Z') ? wchar_t(c + (L'a' - L'A')) : c; }

// The first n characters, folded as above: negative, 0 or positive at the first difference.
inline int COLLECTIONCompareFolded(const wchar_t* a, const wchar_t* b, int32_t n)
{
    for (int32_t i = 0; i < n; ++i) {
        wchar_t x = COLLECTIONFoldASCII(a[i]);
        wchar_t y = COLLECTIONFoldASCII(b[i]);
        if (x != y)
            return x < y ? -1 : 1;
    }
    return 0;
}

// The view of a record's name; a record without one gives a null buffer.
inline tagREFString COLLECTIONRecordName(const void* slot)
{
    const CollectionItemRecord* record = *static_cast<const CollectionItemRecord* const*>(slot);
    tagREFString name{0, nullptr};
    if (record && record->m_Name) {
        int length = 0;
        record->m_Name->GetBuffer(&name.m_Buffer, &length);
        name.m_Length = length < 0 ? 0 : length;
    }
    return name;
}

// Without regard to case, in the manner of wcscasecmp: the text ends at its first
// 0, and a text that ends first is the lower. A missing name is equal to all.
inline int COLLECTIONCompareByName(const void* a, const void* b)
{
    tagREFString x = COLLECTIONRecordName(a);
    tagREFString y = COLLECTIONRecordName(b);
    if (!x.m_Buffer || !y.m_Buffer)
        return 0;
    for (int32_t i = 0;; ++i) {
        // The end of a view reads as the terminator.
        wint_t cx = i < x.m_Length ? std::towlower(wint_t(x.m_Buffer[i])) : 0;
        wint_t cy = i < y.m_Length ? std::towlower(wint_t(y.m_Buffer[i])) : 0;
        if (cx != cy)
            return cx < cy ? -1 : 1;
        if (cx == 0)
            return 0;
    }
}

// The shorter name first; at equal length, by characters with A to Z folded.
inline int COLLECTIONCompareByNameAndLength(const void* a, const void* b)
{
    tagREFString x = COLLECTIONRecordName(a);
    tagREFString y = COLLECTIONRecordName(b);
    if (!x.m_Buffer || !y.m_Buffer)
        return 0;
    if (x.m_Length != y.m_Length)
        return x.m_Length < y.m_Length ? -1 : 1;
    return COLLECTIONCompareFolded(x.m_Buffer, y.m_Buffer, x.m_Length);
}

template <class T, class Base, class Item>
int32_t INamedCollectionImpl<T, Base, Item>::get_Index(IUnknown* key, int* index)
{
    if (!index)
        return E_POINTER;
    if (!key) {
        *index = -1;
        return E_FAIL;
    }
    SmartPtr<IString> text = QueryAs<IString>(key);
    SmartPtr<IUnknown> object(key);
    if (auto variant = QueryAs<IVariant>(key)) {
        // A number is taken as the index itself, with no range test.
        if (variant->get_Type() != VARIANT_NONE) {
            *index = variant->get_Integer();
            return S_OK;
        }
        if (variant->IsString())
            variant->get_String(text.Receive());
        else if (variant->IsObject())
            variant->get_Object(object.Receive());
    }

    if (!text) {
        Held held(this);
        for (int32_t i = 0; object && i < m_Count; ++i) {
            if (SameObject(m_Items[i]->m_Item, object)) {
                *index = i;
                return S_OK;
            }
        }
        *index = -1;
        return E_FAIL;
    }

    Held held(this);
    tagREFString name{0, nullptr};
    int length = 0;
    text->GetBuffer(&name.m_Buffer, &length);
    name.m_Length = length;
    if (!name.m_Buffer || name.m_Length < 1) {
        *index = kNameMiss;
        return E_FAIL;
    }
    return SearchByName(name, index);
}

// Linear while the order is unknown; by halves in a sorted list. A miss by name
// stores 65535, on purpose: callers test the result, not the index.
template <class T, class Base, class Item>
int32_t INamedCollectionImpl<T, Base, Item>::SearchByName(const tagREFString& key, int* index)
{
    if (m_Sorted == 0) {
        if (SUCCEEDED(WalkByName(key, 0, m_Count - 1, false, index)))
            return S_OK;
        *index = kNameMiss;
        return E_FAIL;
    }
    int32_t low = 0;
    int32_t high = m_Count - 1;
    for (;;) {
        if (high - low < 0) {
            *index = kNameMiss;
            return E_FAIL;
        }
        // A short stretch is walked, which also finds the first of equal prefixes there.
        if (high - low < 5)
            return WalkByName(key, low, high, true, index);
        // The search's own narrowing: the middle stays inside the next range.
        int32_t middle = low + (high - low) / 2;
        SmartPtr<IString> name;
        int32_t result = this->get_ItemName(middle, name.Receive());
        if (FAILED(result))
            return result;
        wchar_t* buffer = nullptr;
        int length = 0;
        name->GetBuffer(&buffer, &length);
        if (!buffer || length < 1) {
            high = middle;
            continue;
        }
        int order = COLLECTIONCompareFolded(buffer, key.m_Buffer, std::min<int32_t>(length, key.m_Length));
        if (order > 0) {
            high = middle;
        } else if (order < 0) {
            low = middle;
        } else {
            // The first prefix match that the halving meets, not necessarily the
            // first in the order.
            *index = middle;
            if (m_ExactName == 0 || length == key.m_Length)
                return S_OK;
            if (length < key.m_Length)
                low = middle + 1;
            else
                high = middle - 1;
        }
    }
}

// From low to high: the first item whose name begins with the key. In the walk of
// a sorted list (prefixEnds) that first prefix match ends it even when the whole
// name is required and the lengths differ.
template <class T, class Base, class Item>
int32_t INamedCollectionImpl<T, Base, Item>::WalkByName(const tagREFString& key, int32_t low, int32_t high, bool prefixEnds,
                                                       int* index)
{
    for (int32_t i = low; i <= high; ++i) {
        SmartPtr<IString> name;
        if (FAILED(this->get_ItemName(i, name.Receive())) || !name)
            continue;
        wchar_t* buffer = nullptr;
        int length = 0;
        name->GetBuffer(&buffer, &length);
        if (!buffer || length < key.m_Length)
            continue;
        if (!prefixEnds && m_ExactName != 0 && length != key.m_Length)
            continue;
        if (COLLECTIONCompareFolded(buffer, key.m_Buffer, key.m_Length) != 0)
            continue;
        *index = i;
        if (prefixEnds && m_ExactName != 0 && length != key.m_Length)
            return E_FAIL;
        return S_OK;
    }
    return E_FAIL;
}

// Flags: 2 reverses the order, 16 compares by length first. Only the plain
// ascending sort by name lets get_Index search by halves; the one by length sets
// m_Sorted too, though the order is not the one that search assumes.
template <class T, class Base, class Item> int32_t INamedCollectionImpl<T, Base, Item>::Sort(int flags, void* compare)
{
    using Compare = int (*)(const void*, const void*);
    CollectionLock();
    Compare order = compare ? reinterpret_cast<Compare>(compare)
                            : ((flags & COLLECTION_SORT_BYLENGTH) ? &COLLECTIONCompareByNameAndLength
                                                                   : &COLLECTIONCompareByName);
    if (m_Count > 1) {
        // A merge sort: a comparison that isn't a strict order can't lead it out of
        // the array. Each argument is a pointer to a record pointer, as with qsort.
        std::stable_sort(m_Items, m_Items + m_Count,
                         [order](ItemRecord* a, ItemRecord* b) { return order(&a, &b) < 0; });
    }
    if (!compare && !(flags & COLLECTION_SORT_REVERSE))
        m_Sorted = 1;
    if (flags & COLLECTION_SORT_REVERSE) {
        for (int32_t i = 0, j = m_Count - 1; i < j; ++i, --j)
            std::swap(m_Items[i], m_Items[j]);
    }
    CollectionUnlock();
    return S_OK;
}
