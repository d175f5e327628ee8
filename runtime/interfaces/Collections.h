// Collections: ordered items, by index and by name.
#pragma once
#include "runtime/interfaces/Values.h"

struct ISimpleCollection : IUnknown {
    static const IID& Iid() { return IID_ISimpleCollection; }
    virtual int32_t get_Count(int* count) = 0;
    virtual int32_t get_Item(int index, IUnknown** item) = 0;
};

struct INamedCollection : ISimpleCollection {
    static const IID& Iid() { return IID_INamedCollection; }
    // key: a name (IString), a number (IVariant) or an object held.
    virtual int32_t get_Index(IUnknown* key, int* index) = 0;
    virtual int32_t get_ItemName(int index, IString** name) = 0;
    virtual int32_t Rename(int index, IString* name) = 0;
    virtual int32_t CollectionLock() = 0;
    virtual int32_t CollectionUnlock() = 0;
    virtual int32_t IsCollectionLocked() = 0;
};

// Load flags of a collection's stream form: clear first and add what is read, or
// look each element up by name and load into the item that is there.
constexpr int COLLECTION_LOAD_CLEAR = 0x1000000;
constexpr int COLLECTION_LOAD_MERGE = 0x2000000;

// Sort flags.
constexpr int COLLECTION_SORT_REVERSE = 2;
constexpr int COLLECTION_SORT_BYLENGTH = 16;

struct ISuperCollection : INamedCollection {
    static const IID& Iid() { return IID_ISuperCollection; }
    virtual int32_t get_ItemAttached(int index, IUnknown** attached) = 0;
    virtual int32_t put_ItemAttached(int index, IUnknown* attached) = 0;
    virtual int32_t get_ItemFlags(int index, int* flags) = 0;
    virtual int32_t put_ItemFlags(int index, int flags) = 0;
    virtual int32_t put_Item(int index, IUnknown* item) = 0;
    virtual int32_t Add(IString* name, IUnknown* item, IUnknown* attached, int flags) = 0;
    virtual int32_t Insert(int index, IString* name, IUnknown* item, IUnknown* attached, int flags) = 0;
    virtual int32_t Remove(int index) = 0;
    virtual int32_t Query(const IID& iid, int index, short attached, int* found) = 0;
    virtual int32_t Clear() = 0;
    virtual int32_t Sort(int flags, void* compare) = 0;
};

struct ICreatableSimpleCollection : IUnknown {
    static const IID& Iid() { return IID_ICreatableSimpleCollection; }
    virtual int32_t get_Count(int* count) = 0;
    virtual int32_t get_Item(int index, IUnknown** item) = 0;
    virtual int32_t Add(IUnknown* item) = 0;
};

// A text file cut into lines at a separator.
struct IStringCollection : IUnknown {
    static const IID& Iid() { return IID_IStringCollection; }
    virtual int32_t get_Count(int* count) = 0;
    virtual int32_t get_Item(int index, IUnknown** line) = 0;
    virtual int32_t Add(IUnknown* line) = 0;
    virtual int32_t put_Separator(int character) = 0;
};
