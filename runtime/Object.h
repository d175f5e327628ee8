// The object frame: one reference count per object, two-phase construction, and
// an interface table that QueryInterface reads from top to bottom.
#pragma once
#include <atomic>
#include <new>

#include "runtime/Result.h"
#include "runtime/interfaces/Unknown.h"

template <class T> class CObjectInstance;

template <class T> class CObject : public IUnknown {
public:
    // The creation function that CreateFunction hands out. outer is never read:
    // the system has no aggregation.
    static int32_t _CreateInstance(void* outer, IID* iid, void** object);

    // The fallible half of construction.
    virtual int32_t FinalConstruct() { return S_OK; }
    // Runs once, while every member is intact, before the destructors.
    virtual void FinalRelease() {}
    virtual void Lock() {}
    virtual void Unlock() {}

    // The primary pointer: the face that answers IUnknown.
    IUnknown* Primary() { return static_cast<CObject<T>*>(this); }

protected:
    CObject() = default;
    virtual ~CObject() = default;
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

    std::atomic<int32_t> m_RefCount{1};

    friend class CObjectInstance<T>;
};

// Answers iid with the Via base of the object, seen as I.
template <class I, class Via = I> struct Entry {
    template <class T> static bool Find(T* self, const IID& iid, void** out, int32_t* result)
    {
        if (!(iid == I::Iid()))
            return false;
        I* face = static_cast<I*>(static_cast<Via*>(self));
        face->AddRef();
        *out = face;
        *result = S_OK;
        return true;
    }
};

// Answers iid by asking a member object (a SmartPtr) for it.
template <class I, auto Member> struct Forward {
    template <class T> static bool Find(T* self, const IID& iid, void** out, int32_t* result)
    {
        if (!(iid == I::Iid()))
            return false;
        auto& target = self->*Member;
        *result = target ? target->QueryInterface(iid, out) : E_NOINTERFACE;
        return true;
    }
};

// A list of entries, tried in order; the first that knows iid answers.
template <class... Entries> struct QiList {
    template <class T> static bool Find(T* self, const IID& iid, void** out, int32_t* result)
    {
        return (Entries::Find(self, iid, out, result) || ...);
    }
};

// A mixin's own list, brought in as one entry.
template <class Mixin> struct Chain {
    template <class T> static bool Find(T* self, const IID& iid, void** out, int32_t* result)
    {
        return Mixin::Interfaces::Find(static_cast<Mixin*>(self), iid, out, result);
    }
};

// The shape of every QueryInterface: IUnknown first with the primary pointer, then
// null, then the class's table, then E_NOINTERFACE.
template <class T> int32_t QueryThroughTable(T* self, const IID& iid, void** object)
{
    if (!object)
        return E_POINTER;
    if (iid == IID_IUnknown) {
        IUnknown* primary = self->Primary();
        primary->AddRef();
        *object = primary;
        return S_OK;
    }
    *object = nullptr;
    int32_t result = E_NOINTERFACE;
    if (T::Interfaces::Find(self, iid, object, &result))
        return result;
    return E_NOINTERFACE;
}

// The teardown of an object while every member is still whole: the class's own
// FinalRelease, then the subscribers of its event source, if it has one. A sink's
// last Release may call back into the source, and the list is guarded by the
// owner's lock, so this must not wait for the mixin's destructor.
template <class T> void TearDown(T* self)
{
    self->FinalRelease();
    if constexpr (requires { self->ClearAdvise(nullptr); })
        self->ClearAdvise(nullptr);
}

// The most derived class of every object: it gives all interface bases one
// QueryInterface, AddRef and Release.
template <class T> class CObjectInstance final : public T {
public:
    int32_t QueryInterface(const IID& iid, void** object) override { return QueryThroughTable<T>(this, iid, object); }
    int32_t AddRef() override { return this->m_RefCount.fetch_add(1) + 1; }
    int32_t Release() override
    {
        int32_t count = this->m_RefCount.fetch_sub(1) - 1;
        if (count != 0)
            return count;
        TearDown<T>(this);
        delete this;
        return 0;
    }
};

template <class T> int32_t CObject<T>::_CreateInstance(void* /*outer*/, IID* iid, void** object)
{
    if (!object)
        return E_POINTER;
    auto* instance = new CObjectInstance<T>();
    int32_t result = instance->FinalConstruct();
    if (result == S_OK) {
        *object = nullptr;
        result = iid ? instance->QueryInterface(*iid, object) : E_POINTER;
        if (result >= 0) {
            // Back to the one reference that QueryInterface gave the caller.
            instance->Release();
            return result;
        }
    }
    // Creation failed: tear down without Release.
    TearDown<T>(instance);
    delete instance;
    return result;
}
