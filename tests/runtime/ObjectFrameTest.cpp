// The object frame: creation, failure paths, identity, and the subscriber list.
#include <gtest/gtest.h>

#include "runtime/EventSource.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"
#include "runtime/VXCore.h"

namespace {

int gLive = 0;
int gFinalReleases = 0;
int gSinks = 0;

// A probe: counts live objects and final releases; FinalConstruct may be told to fail.
class CProbe : public CObject<CProbe>,
               public IObjectInfoImpl<CProbe>,
               public IVXSearch,
               public IEventSourceImpl<CProbe, &IID__IUIContainerEvents>,
               public _FIREUIContainerEvents<CProbe>,
               public _FIREUIRefreshEvents<CProbe> {
public:
    static constexpr wchar_t kObjectName[] = L"Probe";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXSearch>, Entry<IEventSource>>;
    static inline int32_t s_ConstructResult = S_OK;

    CProbe() { ++gLive; }
    ~CProbe() override { --gLive; }
    int32_t FinalConstruct() override { return s_ConstructResult; }
    void FinalRelease() override { ++gFinalReleases; }
    int32_t Find(IString*, int, IUnknown**) override { return E_FAIL; }
};

// A subscriber that can leave the list while it is being called.
class CSink : public CObject<CSink>, public IObjectInfoImpl<CSink>, public _IUIContainerEvents {
public:
    static constexpr wchar_t kObjectName[] = L"Sink";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<_IUIContainerEvents>>;
    CSink() { ++gSinks; }
    ~CSink() override { --gSinks; }
    int32_t NodeSelect(IUnknown*, int, int, int, IUnknown*) override
    {
        ++m_Calls;
        if (m_Source && m_LeaveOnCall)
            m_Source->Advise(Primary(), ADVISE_REMOVE);
        return S_OK;
    }
    int m_Calls = 0;
    bool m_LeaveOnCall = false;
    IEventSource* m_Source = nullptr;
};

template <class T, class I> SmartPtr<I> Make()
{
    SmartPtr<I> out;
    IID iid = I::Iid();
    EXPECT_EQ(CObject<T>::_CreateInstance(nullptr, &iid, out.ReceiveVoid()), S_OK);
    return out;
}

TEST(ObjectFrame, CreationAndFailures)
{
    gLive = gFinalReleases = 0;
    {
        auto unknown = Make<CProbe, IUnknown>();
        EXPECT_EQ(unknown->AddRef(), 2);
        EXPECT_EQ(unknown->Release(), 1);
        auto search = unknown.As<IVXSearch>();
        // Identity is the object's, whichever face is compared.
        EXPECT_TRUE(SmartPtr<IUnknown>(search.get()) == unknown.get());
        EXPECT_TRUE(SmartPtr<IUnknown>(search.get()) == unknown.As<IObjectInfo>().get());
        void* missing = reinterpret_cast<void*>(0x1);
        EXPECT_EQ(search->QueryInterface(IID_IVXBook, &missing), E_NOINTERFACE);
        EXPECT_EQ(missing, nullptr);
        EXPECT_EQ(gLive, 1);
    }
    EXPECT_EQ(gLive, 0);
    EXPECT_EQ(gFinalReleases, 1);

    // An interface the object lacks: destroyed after FinalRelease, output null.
    void* out = reinterpret_cast<void*>(0x1);
    IID iid = IID_IFolderStream;
    EXPECT_EQ(CObject<CProbe>::_CreateInstance(nullptr, &iid, &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(gLive, 0);
    EXPECT_EQ(gFinalReleases, 2);

    // FinalConstruct fails: its result, the output as the caller left it.
    CProbe::s_ConstructResult = E_INVALIDARG;
    out = reinterpret_cast<void*>(0x1);
    iid = IID_IUnknown;
    EXPECT_EQ(CObject<CProbe>::_CreateInstance(nullptr, &iid, &out), E_INVALIDARG);
    EXPECT_EQ(out, reinterpret_cast<void*>(0x1));
    EXPECT_EQ(gLive, 0);
    EXPECT_EQ(gFinalReleases, 3);
    CProbe::s_ConstructResult = S_OK;
}

TEST(EventSource, GrowthReplaceAndRemoval)
{
    gLive = 0;
    {
        auto source = Make<CProbe, IEventSource>();
        auto* probe = static_cast<CProbe*>(source.get());
        std::vector<SmartPtr<IUnknown>> sinks;
        for (int i = 0; i < 9; ++i) {
            sinks.push_back(Make<CSink, IUnknown>());
            EXPECT_EQ(source->Advise(sinks.back(), ADVISE_ADD), S_OK);
            EXPECT_EQ(probe->AdviseCapacity(), i < 8 ? 8 : 16) << "after advise " << i + 1;
        }
        EXPECT_EQ(source->GetAdviseCount(), 9);
        EXPECT_EQ(source->Advise(sinks[0], ADVISE_ADD), S_FALSE) << "listed already";

        // A sink that doesn't speak the event interface is refused with its own answer.
        auto stranger = Make<CProbe, IUnknown>();
        EXPECT_EQ(source->Advise(stranger, ADVISE_ADD), E_NOINTERFACE);
        EXPECT_EQ(source->Advise(nullptr, ADVISE_ADD), E_POINTER);

        // Replace: the first call adds an entry of mode 2, the next takes its place.
        auto first = Make<CSink, IUnknown>();
        auto second = Make<CSink, IUnknown>();
        EXPECT_EQ(source->Advise(first, ADVISE_REPLACE), S_OK);
        EXPECT_EQ(source->GetAdviseCount(), 10);
        EXPECT_EQ(source->Advise(second, ADVISE_REPLACE), S_OK);
        EXPECT_EQ(source->GetAdviseCount(), 10);
        SmartPtr<IUnknown> listed;
        int mode = 0;
        EXPECT_EQ(source->GetAdviseItem(9, listed.Receive(), &mode), S_OK);
        EXPECT_TRUE(listed == second.get());
        EXPECT_EQ(mode, ADVISE_REPLACE);
        EXPECT_EQ(source->GetAdviseItem(10, nullptr, nullptr), E_FAIL);

        EXPECT_EQ(source->Advise(stranger, ADVISE_REMOVE), E_FAIL) << "not listed";
        EXPECT_EQ(source->Advise(sinks[3], ADVISE_REMOVE), S_OK);
        EXPECT_EQ(source->GetAdviseCount(), 9);
        EXPECT_EQ(source->Advise(nullptr, ADVISE_REMOVE), S_OK);
        EXPECT_EQ(source->GetAdviseCount(), 0);
        EXPECT_EQ(source->Advise(nullptr, ADVISE_REMOVE), S_OK);
        EXPECT_EQ(probe->AdviseCapacity(), 16) << "the array stays";
    }
    EXPECT_EQ(gLive, 0) << "the source released every sink";
}

// A source with a real lock: its Lock must never run once the object is taken apart.
int gLocksOnDeadOwner = 0;
class CLockedSource : public CObject<CLockedSource>,
                      public IObjectInfoImpl<CLockedSource>,
                      public IEventSourceImpl<CLockedSource, &IID__IUIContainerEvents> {
public:
    static constexpr wchar_t kObjectName[] = L"LockedSource";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IEventSource>>;
    ~CLockedSource() override { m_Whole = false; }
    void Lock() override
    {
        if (!m_Whole) {
            ++gLocksOnDeadOwner;
            return;
        }
        m_Lock.Lock();
    }
    void Unlock() override
    {
        if (m_Whole)
            m_Lock.Unlock();
    }

private:
    CResourceLock m_Lock;
    bool m_Whole = true;
};

TEST(EventSource, SubscribersGoWhileTheOwnerIsWhole)
{
    gSinks = 0;
    gLocksOnDeadOwner = 0;
    {
        auto source = Make<CLockedSource, IEventSource>();
        auto sink = Make<CSink, IUnknown>();
        ASSERT_EQ(source->Advise(sink, ADVISE_ADD), S_OK);
    }
    EXPECT_EQ(gSinks, 0) << "the sink was released with its source";
    EXPECT_EQ(gLocksOnDeadOwner, 0);
}

TEST(EventSource, SinksMayLeaveDuringFiring)
{
    auto source = Make<CProbe, IEventSource>();
    auto* probe = static_cast<CProbe*>(source.get());
    std::vector<SmartPtr<IUnknown>> sinks;
    for (int i = 0; i < 4; ++i) {
        sinks.push_back(Make<CSink, IUnknown>());
        auto* sink = static_cast<CSink*>(static_cast<CObject<CSink>*>(sinks.back().get()));
        sink->m_Source = source;
        sink->m_LeaveOnCall = (i == 1);
        source->Advise(sinks.back(), ADVISE_ADD);
    }
    probe->Fire_NodeSelect(nullptr, 0, 0, 0, nullptr);
    auto calls = [&](int i) { return static_cast<CSink*>(static_cast<CObject<CSink>*>(sinks[size_t(i)].get()))->m_Calls; };
    // The second sink left; the entries moved down, so the third was skipped: accepted.
    EXPECT_EQ((std::vector<int>{calls(0), calls(1), calls(2), calls(3)}), (std::vector<int>{1, 1, 0, 1}));
    EXPECT_EQ(source->GetAdviseCount(), 3);
    source->Advise(nullptr, ADVISE_REMOVE);
}

} // namespace
