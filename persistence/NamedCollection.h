// The named collection: an ordered list of named items that songs, Bibles, books
// and chapters keep their children in. One template for all of them; the owner
// supplies Clear, VerifyInterface (which interface an item must have) and its Lock.
#pragma once
#include <cstdint>
#include <utility>

#include "runtime/Object.h"
#include "runtime/SmartPtr.h"
#include "runtime/VXCore.h"

// One item: its name, the item, an object riding along with it, and flags that
// belong to the owner. Each reference here is owned by the record.
struct CollectionItemRecord {
    IString* m_Name = nullptr;
    IUnknown* m_Item = nullptr;
    IUnknown* m_Attached = nullptr;
    int32_t m_Flags = 0;

    // Drops the three references; the fields are null before each Release runs.
    void Release()
    {
        ReleaseField(m_Item);
        ReleaseField(m_Attached);
        ReleaseField(m_Name);
    }

    template <class P> static void ReleaseField(P*& field)
    {
        P* old = field;
        field = nullptr;
        if (old)
            old->Release();
    }

    // Stores value with a reference of its own, taken before the old one is dropped.
    template <class P> static void Replace(P*& field, P* value)
    {
        if (value)
            value->AddRef();
        P* old = field;
        field = value;
        if (old)
            old->Release();
    }
};

// The comparisons that Sort offers, on pointers to record pointers (qsort's view).
inline int COLLECTIONCompareByName(const void* a, const void* b);
inline int COLLECTIONCompareByNameAndLength(const void* a, const void* b);

template <class T, class Base, class Item> class INamedCollectionImpl : public Base {
public:
    using ItemRecord = CollectionItemRecord;
    // All three collection faces answer with this one base.
    using Interfaces = QiList<Entry<ISimpleCollection, Base>, Entry<INamedCollection, Base>, Entry<ISuperCollection, Base>>;

    // A book of many verses shouldn't reallocate often.
    static constexpr int32_t kGrowth = 1024;
    // What a search by name stores on a miss; a search by object stores -1.
    static constexpr int kNameMiss = 65535;

    INamedCollectionImpl() = default;
    INamedCollectionImpl(const INamedCollectionImpl&) = delete;
    INamedCollectionImpl& operator=(const INamedCollectionImpl&) = delete;

    virtual ~INamedCollectionImpl()
    {
        // The owner is gone by the time a base destructor runs, so its Lock can't be
        // called; nobody else can reach a dying object anyway.
        FreeRecords();
        delete[] m_Items;
        m_Items = nullptr;
        m_Capacity = 0;
    }

    // ---- ISimpleCollection ----

    int32_t get_Count(int* count) override
    {
        if (!count)
            return E_POINTER;
        *count = m_Count;
        return S_OK;
    }

    int32_t get_Item(int index, IUnknown** item) override
    {
        if (!item)
            return E_POINTER;
        Held held(this);
        if (!InRange(index))
            return E_INVALIDARG;
        return HandOut(m_Items[index]->m_Item, item);
    }

    // ---- INamedCollection ----

    int32_t get_Index(IUnknown* key, int* index) override;

    int32_t get_ItemName(int index, IString** name) override
    {
        if (!name)
            return E_POINTER;
        Held held(this);
        if (!InRange(index))
            return E_INVALIDARG;
        return HandOut(m_Items[index]->m_Name, name);
    }

    int32_t Rename(int index, IString* name) override
    {
        Held held(this);
        if (!InRange(index))
            return E_INVALIDARG;
        ItemRecord::Replace(m_Items[index]->m_Name, name);
        return S_OK;
    }

    // For callers who walk the collection: the owner's lock, unless each operation
    // takes it by itself.
    int32_t CollectionLock() override
    {
        if (m_ThreadSafe == 0) {
            Owner()->Lock();
            m_Locked = 1;
        }
        return S_OK;
    }

    int32_t CollectionUnlock() override
    {
        if (m_ThreadSafe == 0) {
            Owner()->Unlock();
            m_Locked = 0;
        }
        return S_OK;
    }

    // The sense of a result code: 0 (S_OK) while a lock is held.
    int32_t IsCollectionLocked() override { return m_Locked != 0 ? 0 : 1; }

    // ---- ISuperCollection ----

    int32_t get_ItemAttached(int index, IUnknown** attached) override
    {
        if (!attached)
            return E_POINTER;
        Held held(this);
        if (!InRange(index))
            return E_INVALIDARG;
        return HandOut(m_Items[index]->m_Attached, attached);
    }

    int32_t put_ItemAttached(int index, IUnknown* attached) override
    {
        Held held(this);
        if (!InRange(index))
            return E_INVALIDARG;
        ItemRecord::Replace(m_Items[index]->m_Attached, attached);
        return S_OK;
    }

    int32_t get_ItemFlags(int index, int* flags) override
    {
        if (!flags)
            return E_POINTER;
        Held held(this);
        if (!InRange(index))
            return E_INVALIDARG;
        *flags = m_Items[index]->m_Flags;
        return S_OK;
    }

    int32_t put_ItemFlags(int index, int flags) override
    {
        if (!InRange(index))
            return E_INVALIDARG;
        m_Items[index]->m_Flags = flags;
        return S_OK;
    }

    int32_t put_Item(int index, IUnknown* item) override
    {
        SmartPtr<Item> verified;
        if (!item || FAILED(VerifyInterface(item, verified.Receive())) || !verified)
            return E_INVALIDARG;
        Held held(this);
        if (!InRange(index))
            return E_INVALIDARG;
        ItemRecord::Replace(m_Items[index]->m_Item, static_cast<IUnknown*>(verified.get()));
        return S_OK;
    }

    int32_t Add(IString* name, IUnknown* item, IUnknown* attached, int flags) override
    {
        if (!item)
            return E_POINTER;
        SmartPtr<Item> verified;
        if (FAILED(VerifyInterface(item, verified.Receive())) || !verified)
            return E_INVALIDARG;
        {
            Held held(this);
            if (m_Count >= m_Capacity)
                Grow();
            auto* record = new ItemRecord;
            ItemRecord::Replace(record->m_Name, name);
            ItemRecord::Replace(record->m_Attached, attached);
            ItemRecord::Replace(record->m_Item, static_cast<IUnknown*>(verified.get()));
            record->m_Flags = flags;
            m_Items[m_Count] = record;
            ++m_Count;
        }
        // New items go to the end: the order is no longer known.
        m_Sorted = 0;
        return S_OK;
    }

    int32_t Insert(int index, IString* name, IUnknown* item, IUnknown* attached, int flags) override
    {
        int32_t result = this->Add(name, item, attached, flags);
        if (FAILED(result))
            return result;
        // An index outside the records leaves the new one at the end.
        if (index >= 0 && index < m_Count - 1) {
            ItemRecord* added = m_Items[m_Count - 1];
            for (int32_t i = m_Count - 1; i > index; --i)
                m_Items[i] = m_Items[i - 1];
            m_Items[index] = added;
        }
        m_Sorted = 0;
        return S_OK;
    }

    // Removal doesn't disturb the order, so m_Sorted stays.
    int32_t Remove(int index) override
    {
        ItemRecord* record = nullptr;
        {
            Held held(this);
            if (!InRange(index))
                return E_INVALIDARG;
            record = m_Items[index];
            for (int32_t i = index; i < m_Count - 1; ++i)
                m_Items[i] = m_Items[i + 1];
            --m_Count;
            m_Items[m_Count] = nullptr;
        }
        record->Release();
        delete record;
        return S_OK;
    }

    // Answers only with an index: index picks the n-th item of the interface from 0,
    // and -1 the last.
    int32_t Query(const IID& iid, int index, short attached, int* found) override
    {
        if (!found)
            return E_POINTER;
        if (m_Count < 1)
            return E_FAIL;
        int hits = 0;
        for (int32_t i = 0; i < m_Count; ++i) {
            IUnknown* candidate = attached != 0 ? m_Items[i]->m_Attached : m_Items[i]->m_Item;
            if (!candidate)
                continue;
            void* face = nullptr;
            if (FAILED(candidate->QueryInterface(iid, &face)))
                continue;
            if (face)
                static_cast<IUnknown*>(face)->Release();
            *found = i;
            if (index == hits)
                return S_OK;
            ++hits;
        }
        return (index == -1 && hits > 0) ? S_OK : E_FAIL;
    }

    int32_t Sort(int flags, void* compare) override;

    // ---- The mixin's own ----

    // The lock of single operations, live only when the collection is thread safe.
    virtual int32_t cLock()
    {
        if (m_ThreadSafe != 0) {
            if (m_Locked != 0)
                cUnlock();
            Owner()->Lock();
            m_Locked = 1;
        }
        return S_OK;
    }

    virtual int32_t cUnlock()
    {
        if (m_ThreadSafe != 0) {
            Owner()->Unlock();
            m_Locked = 0;
        }
        return S_OK;
    }

    // By identity; a null item finds the first empty slot. A miss leaves *index alone.
    virtual int32_t get_ItemIndex(IUnknown* item, int* index)
    {
        if (!index)
            return E_POINTER;
        Held held(this);
        return FindByIdentity(&ItemRecord::m_Item, item, index);
    }

    virtual int32_t get_IndexAttached(IUnknown* attached, int* index)
    {
        if (!index)
            return E_POINTER;
        return FindByIdentity(&ItemRecord::m_Attached, attached, index);
    }

    // The owner's: S_OK and the item as Item with a reference, or E_FAIL.
    virtual int32_t VerifyInterface(IUnknown* item, Item** verified) = 0;

    // Empties the list; the array stays allocated and m_Sorted as it was.
    virtual int32_t CollectionClear()
    {
        Held held(this);
        FreeRecords();
        return S_OK;
    }

    virtual int32_t Save(IDataStream* stream, int flags);
    virtual int32_t Load(IDataStream* stream, int flags);

    // ---- Fields ----

    int32_t m_Count = 0;
    int32_t m_Capacity = 0;
    ItemRecord** m_Items = nullptr;
    // Not 0: the records are in ascending name order and get_Index may search by halves.
    int32_t m_Sorted = 0;
    // Not 0: a search by name must match the whole name, not only its beginning.
    int32_t m_ExactName = 0;
    // Selects which lock pair is live: cLock when set, CollectionLock when 0.
    int32_t m_ThreadSafe = 0;
    int16_t m_Locked = 0;

protected:
    bool InRange(int index) const { return index >= 0 && index < m_Count; }

private:
    // cLock for the span of one operation.
    class Held {
    public:
        explicit Held(INamedCollectionImpl* owner) : m_Owner(owner) { m_Owner->cLock(); }
        ~Held() { m_Owner->cUnlock(); }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;

    private:
        INamedCollectionImpl* m_Owner;
    };

    T* Owner() { return static_cast<T*>(this); }

    // An out pointer gets the field with a reference; an empty field is E_FAIL with null.
    template <class P> static int32_t HandOut(P* field, P** out)
    {
        *out = field;
        if (!field)
            return E_FAIL;
        field->AddRef();
        return S_OK;
    }

    int32_t FindByIdentity(IUnknown* ItemRecord::*field, IUnknown* object, int* index)
    {
        for (int32_t i = 0; i < m_Count; ++i) {
            IUnknown* held = m_Items[i]->*field;
            if (object ? SameObject(held, object) : held == nullptr) {
                *index = i;
                return S_OK;
            }
        }
        return E_FAIL;
    }

    void Grow()
    {
        // Entries from m_Count on are never read, so they aren't cleared: a Bible's
        // chapters each take a step of 1024 for a few dozen verses, and clearing those
        // steps cost more than reading the whole book.
        auto* larger = new ItemRecord*[size_t(m_Capacity) + kGrowth];
        for (int32_t i = 0; i < m_Count; ++i)
            larger[i] = m_Items[i];
        delete[] m_Items;
        m_Items = larger;
        m_Capacity += kGrowth;
    }

    void FreeRecords()
    {
        // The count falls first, so that a Release that comes back here sees an empty list.
        int32_t count = m_Count;
        m_Count = 0;
        for (int32_t i = 0; i < count; ++i) {
            ItemRecord* record = m_Items[i];
            m_Items[i] = nullptr;
            if (record) {
                record->Release();
                delete record;
            }
        }
    }

    int32_t SearchByName(const tagREFString& key, int* index);
    int32_t WalkByName(const tagREFString& key, int32_t low, int32_t high, bool prefixEnds, int* index);
    int32_t SaveXML(IXMLStream* xml, IDataStream* stream, int flags);
    int32_t SaveFolder(IFolderStream* folder, int flags);
    void LoadXML(IXMLStream* xml, int flags);
    void LoadXMLElement(IXMLStream* xml, const tagREFString& name, int flags);
    void LoadFolder(IFolderStream* folder);
    static SmartPtr<IString> SavedName(ItemRecord* record, int32_t index);
};

#include "persistence/NamedCollectionSearch.h"
#include "persistence/NamedCollectionStream.h"
