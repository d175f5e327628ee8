// A named collection whose items may wait as uncut text until something asks for them:
// a song read for a search, a chapter of a book just opened. Every road to the list lets
// the owner cut them first (T::CutPendingVerses), and a list that is emptied forgets what
// was left to cut (T::DropPendingVerses) rather than making items that would go at once.
#pragma once
#include "persistence/NamedCollection.h"

template <class T, class Item> class IPendingCollectionImpl : public INamedCollectionImpl<T, ISuperCollection, Item> {
    using Base = INamedCollectionImpl<T, ISuperCollection, Item>;
    T* Self() { return static_cast<T*>(this); }

public:
    int32_t get_Count(int* count) override { return Self()->CutPendingVerses(), Base::get_Count(count); }
    int32_t get_Item(int index, IUnknown** item) override { return Self()->CutPendingVerses(), Base::get_Item(index, item); }
    int32_t get_Index(IUnknown* key, int* index) override { return Self()->CutPendingVerses(), Base::get_Index(key, index); }
    int32_t get_ItemName(int index, IString** name) override
    {
        return Self()->CutPendingVerses(), Base::get_ItemName(index, name);
    }
    int32_t Rename(int index, IString* name) override { return Self()->CutPendingVerses(), Base::Rename(index, name); }
    int32_t CollectionLock() override { return Self()->CutPendingVerses(), Base::CollectionLock(); }
    int32_t get_ItemAttached(int index, IUnknown** attached) override
    {
        return Self()->CutPendingVerses(), Base::get_ItemAttached(index, attached);
    }
    int32_t put_ItemAttached(int index, IUnknown* attached) override
    {
        return Self()->CutPendingVerses(), Base::put_ItemAttached(index, attached);
    }
    int32_t get_ItemFlags(int index, int* flags) override
    {
        return Self()->CutPendingVerses(), Base::get_ItemFlags(index, flags);
    }
    int32_t put_ItemFlags(int index, int flags) override
    {
        return Self()->CutPendingVerses(), Base::put_ItemFlags(index, flags);
    }
    int32_t put_Item(int index, IUnknown* item) override { return Self()->CutPendingVerses(), Base::put_Item(index, item); }
    int32_t Add(IString* name, IUnknown* item, IUnknown* attached, int flags) override
    {
        return Self()->CutPendingVerses(), Base::Add(name, item, attached, flags);
    }
    int32_t Insert(int index, IString* name, IUnknown* item, IUnknown* attached, int flags) override
    {
        return Self()->CutPendingVerses(), Base::Insert(index, name, item, attached, flags);
    }
    int32_t Remove(int index) override { return Self()->CutPendingVerses(), Base::Remove(index); }
    int32_t Query(const IID& iid, int index, short attached, int* found) override
    {
        return Self()->CutPendingVerses(), Base::Query(iid, index, attached, found);
    }
    int32_t Sort(int flags, void* compare) override { return Self()->CutPendingVerses(), Base::Sort(flags, compare); }
    int32_t get_ItemIndex(IUnknown* item, int* index) override
    {
        return Self()->CutPendingVerses(), Base::get_ItemIndex(item, index);
    }
    int32_t get_IndexAttached(IUnknown* attached, int* index) override
    {
        return Self()->CutPendingVerses(), Base::get_IndexAttached(attached, index);
    }
    int32_t CollectionClear() override
    {
        Self()->Lock();
        Self()->DropPendingVerses();
        int32_t result = Base::CollectionClear();
        Self()->Unlock();
        return result;
    }
    int32_t Save(IDataStream* stream, int flags) override { return Self()->CutPendingVerses(), Base::Save(stream, flags); }
    int32_t Load(IDataStream* stream, int flags) override { return Self()->CutPendingVerses(), Base::Load(stream, flags); }
};
