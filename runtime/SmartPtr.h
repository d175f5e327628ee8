// The owning interface pointer. Misuse that would leak or double-release does not
// compile: there is no operator&, and adopting a reference is said by name.
#pragma once
#include <utility>

#include "runtime/IID.h"
#include "runtime/interfaces/Unknown.h"

template <class T> class SmartPtr {
public:
    SmartPtr() = default;
    SmartPtr(std::nullptr_t) {}
    // Borrowed pointer: the smart pointer takes a reference of its own.
    explicit SmartPtr(T* borrowed) : m_Pointer(borrowed)
    {
        if (m_Pointer)
            m_Pointer->AddRef();
    }
    SmartPtr(const SmartPtr& other) : SmartPtr(other.m_Pointer) {}
    SmartPtr(SmartPtr&& other) noexcept : m_Pointer(other.m_Pointer) { other.m_Pointer = nullptr; }
    ~SmartPtr() { Clear(); }

    // A pointer whose reference the caller hands over.
    static SmartPtr Adopt(T* owned)
    {
        SmartPtr result;
        result.m_Pointer = owned;
        return result;
    }

    // The new reference is taken before the old one is dropped: safe for self-assignment.
    SmartPtr& operator=(const SmartPtr& other)
    {
        if (other.m_Pointer)
            other.m_Pointer->AddRef();
        T* old = m_Pointer;
        m_Pointer = other.m_Pointer;
        if (old)
            old->Release();
        return *this;
    }
    SmartPtr& operator=(SmartPtr&& other) noexcept
    {
        if (this != &other) {
            Clear();
            m_Pointer = other.m_Pointer;
            other.m_Pointer = nullptr;
        }
        return *this;
    }
    SmartPtr& operator=(std::nullptr_t)
    {
        Clear();
        return *this;
    }

    // Replaces the value by a pointer that already owns its reference. The member
    // is null while the old value's Release runs.
    void Attach(T* owned)
    {
        Clear();
        m_Pointer = owned;
    }
    // Hands the reference to the caller.
    T* Detach()
    {
        T* p = m_Pointer;
        m_Pointer = nullptr;
        return p;
    }
    // Releases the value and gives the address for an out parameter.
    T** Receive()
    {
        Clear();
        return &m_Pointer;
    }
    void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }

    // A new reference for an out parameter, or null.
    T* Copy() const
    {
        if (m_Pointer)
            m_Pointer->AddRef();
        return m_Pointer;
    }

    void Clear()
    {
        T* p = m_Pointer;
        m_Pointer = nullptr;
        if (p)
            p->Release();
    }

    T* get() const { return m_Pointer; }
    T* operator->() const { return m_Pointer; }
    T& operator*() const { return *m_Pointer; }
    explicit operator bool() const { return m_Pointer != nullptr; }
    operator T*() const { return m_Pointer; }

    // Asks the object for another interface; empty if it has none.
    template <class I> SmartPtr<I> As() const
    {
        SmartPtr<I> result;
        if (m_Pointer)
            m_Pointer->QueryInterface(I::Iid(), result.ReceiveVoid());
        return result;
    }

private:
    void* operator new(size_t) = delete;
    T* m_Pointer = nullptr;
};

// Object identity: two interface pointers are one object when their IUnknown faces agree.
bool SameObject(IUnknown* a, IUnknown* b);

inline bool operator==(const SmartPtr<IUnknown>& a, IUnknown* b) { return SameObject(a.get(), b); }

// Asks any pointer for an interface; empty if it is null or lacks it.
template <class I, class From> SmartPtr<I> QueryAs(From* object)
{
    SmartPtr<I> result;
    if (object)
        object->QueryInterface(I::Iid(), result.ReceiveVoid());
    return result;
}
