// The subscriber list of an event source, and the mixins that fire at it.
#pragma once
#include <cstdlib>
#include <cstring>

#include "runtime/SmartPtr.h"
#include "runtime/interfaces/Unknown.h"

struct AdviseEntry {
    IUnknown* m_Sink; // owns one reference
    int m_Mode;
};

// T is the owner: its Lock and Unlock guard the list. EventIid is the interface a
// sink must answer to be listed by the three-argument Advise's callers.
template <class T, const IID* EventIid> class IEventSourceImpl : public IEventSource {
public:
    IEventSourceImpl() = default;
    IEventSourceImpl(const IEventSourceImpl&) = delete;
    IEventSourceImpl& operator=(const IEventSourceImpl&) = delete;
    // The frame empties the list at the end of FinalRelease, while the owner is
    // whole (TearDown). What is left here belongs to a source that was never in
    // the frame; its owner is gone already, so its lock is not taken.
    ~IEventSourceImpl()
    {
        for (int i = 0; i < m_Count; ++i)
            FreeEntry(m_Items[i]);
        std::free(m_Items);
    }

    int32_t Advise(IUnknown* sink, int mode) override { return Advise(sink, mode, *EventIid); }

    int32_t GetAdviseCount() override { return m_Count; }

    int32_t GetAdviseItem(unsigned int index, IUnknown** sink, int* mode) override
    {
        if (index >= unsigned(m_Count))
            return E_FAIL;
        AdviseEntry* entry = m_Items[index];
        if (mode)
            *mode = entry->m_Mode;
        if (!sink)
            return S_OK;
        *sink = entry->m_Sink;
        if (!entry->m_Sink)
            return E_FAIL;
        entry->m_Sink->AddRef();
        return S_OK;
    }

    int32_t Advise(IUnknown* sink, int mode, const IID& iid) override
    {
        if (mode == ADVISE_REMOVE)
            return ClearAdvise(sink);
        if (mode == ADVISE_REPLACE) {
            // At most one subscriber of this mode: the newcomer takes its place.
            for (int i = 0; i < m_Count; ++i) {
                AdviseEntry* entry = m_Items[i];
                if (entry->m_Mode != ADVISE_REPLACE)
                    continue;
                IUnknown* old = entry->m_Sink;
                entry->m_Sink = sink;
                if (sink)
                    sink->AddRef();
                if (old)
                    old->Release();
                return S_OK;
            }
        }
        if (!sink)
            return E_POINTER;
        void* probe = nullptr;
        int32_t result = sink->QueryInterface(iid, &probe);
        if (result < 0)
            return result;
        if (probe)
            static_cast<IUnknown*>(probe)->Release();
        return Append(sink, mode);
    }

    // Adds without asking the sink for any interface.
    int32_t AddAdvise(IUnknown* sink, int mode)
    {
        if (!sink)
            return E_POINTER;
        return Append(sink, mode);
    }

    int32_t ClearAdvise(IUnknown* sink)
    {
        if (!sink) {
            if (m_Count == 0)
                return S_OK;
            Owner()->Lock();
            int count = m_Count;
            m_Count = 0;
            for (int i = 0; i < count; ++i) {
                FreeEntry(m_Items[i]);
                m_Items[i] = nullptr;
            }
            Owner()->Unlock();
            return S_OK;
        }
        Owner()->Lock();
        for (int i = 0; i < m_Count; ++i) {
            if (!SameObject(m_Items[i]->m_Sink, sink))
                continue;
            FreeEntry(m_Items[i]);
            std::memmove(&m_Items[i], &m_Items[i + 1], sizeof(AdviseEntry*) * size_t(m_Count - i - 1));
            --m_Count;
            m_Items[m_Count] = nullptr;
            Owner()->Unlock();
            return S_OK;
        }
        Owner()->Unlock();
        return E_FAIL;
    }

    // The sink at an index, read under the owner's lock so that a sink may leave
    // during a firing; empty past the present end.
    SmartPtr<IUnknown> TakeSink(int index)
    {
        SmartPtr<IUnknown> sink;
        Owner()->Lock();
        if (index < m_Count && m_Items[index]->m_Sink)
            sink = SmartPtr<IUnknown>(m_Items[index]->m_Sink);
        Owner()->Unlock();
        return sink;
    }

    int32_t AdviseCapacity() const { return m_Capacity; }

protected:
    int32_t m_Count = 0;
    int32_t m_Capacity = 0;
    AdviseEntry** m_Items = nullptr;

private:
    T* Owner() { return static_cast<T*>(this); }

    static void FreeEntry(AdviseEntry* entry)
    {
        if (entry->m_Sink)
            entry->m_Sink->Release();
        delete entry;
    }

    // A sink listed already keeps its entry and its old mode: S_FALSE.
    int32_t Append(IUnknown* sink, int mode)
    {
        Owner()->Lock();
        for (int i = 0; i < m_Count; ++i) {
            if (SameObject(m_Items[i]->m_Sink, sink)) {
                Owner()->Unlock();
                return S_FALSE;
            }
        }
        if (m_Count >= m_Capacity) {
            int32_t capacity = m_Capacity + 8;
            auto** items = static_cast<AdviseEntry**>(std::calloc(size_t(capacity), sizeof(AdviseEntry*)));
            if (m_Items)
                std::memcpy(items, m_Items, sizeof(AdviseEntry*) * size_t(m_Count));
            std::free(m_Items);
            m_Items = items;
            m_Capacity = capacity;
        }
        sink->AddRef();
        m_Items[m_Count++] = new AdviseEntry{sink, mode};
        Owner()->Unlock();
        return S_OK;
    }
};

// Fires NodeSelect at every subscriber that speaks _IUIContainerEvents.
template <class T> class _FIREUIContainerEvents {
public:
    void Fire_NodeSelect(IUnknown* node, int a, int b, int c, IUnknown* data)
    {
        T* owner = static_cast<T*>(this);
        int count = owner->GetAdviseCount();
        for (int i = 0; i < count; ++i) {
            SmartPtr<IUnknown> sink = owner->TakeSink(i);
            if (auto events = sink.template As<_IUIContainerEvents>())
                events->NodeSelect(node, a, b, c, data);
        }
    }
};

// Fires UIItemChanged(owner, 0); stops at the first index that yields no sink.
template <class T> class _FIREUIRefreshEvents {
public:
    void Fire_UIItemChanged()
    {
        T* owner = static_cast<T*>(this);
        int count = owner->GetAdviseCount();
        for (int i = 0; i < count; ++i) {
            SmartPtr<IUnknown> sink = owner->TakeSink(i);
            if (!sink)
                break;
            if (auto events = sink.template As<_IUIRefreshEvent>())
                events->UIItemChanged(owner->Primary(), 0);
        }
    }
};
