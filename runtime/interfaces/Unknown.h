// The root of every interface, and the small object faces shared by all families.
#pragma once
#include <cstdint>

#include "runtime/IID.h"
#include "runtime/REFString.h"
#include "runtime/Result.h"

struct IUnknown {
    static const IID& Iid() { return IID_IUnknown; }
    virtual int32_t QueryInterface(const IID& iid, void** object) = 0;
    virtual int32_t AddRef() = 0;
    virtual int32_t Release() = 0;

protected:
    ~IUnknown() = default;
};

struct IObjectInfo : IUnknown {
    static const IID& Iid() { return IID_IObjectInfo; }
    virtual int32_t GetName(int index, tagREFString* name) = 0;
};

struct IParent : IUnknown {
    static const IID& Iid() { return IID_IParent; }
    virtual int32_t get_Parent(IUnknown** parent) = 0;
    virtual int32_t put_Parent(IUnknown* parent) = 0;
};

struct IContainedObject : IUnknown {
    static const IID& Iid() { return IID_IContainedObject; }
    virtual int32_t get_Container(IUnknown** container) = 0;
};

struct IActivatableObject : IUnknown {
    static const IID& Iid() { return IID_IActivatableObject; }
    virtual int32_t Activate(int on) = 0;
};

struct IReplicableObject : IUnknown {
    static const IID& Iid() { return IID_IReplicableObject; }
    virtual int32_t Replicate(IUnknown** copy) = 0;
};

// Advise modes.
constexpr int ADVISE_REMOVE = 0;
constexpr int ADVISE_ADD = 1;
constexpr int ADVISE_REPLACE = 2;

struct IEventSource : IUnknown {
    static const IID& Iid() { return IID_IEventSource; }
    virtual int32_t Advise(IUnknown* sink, int mode) = 0;
    virtual int32_t GetAdviseCount() = 0;
    virtual int32_t GetAdviseItem(unsigned int index, IUnknown** sink, int* mode) = 0;
    virtual int32_t Advise(IUnknown* sink, int mode, const IID& iid) = 0;
};

// Events that subscribers receive.
struct _IUIRefreshEvent : IUnknown {
    static const IID& Iid() { return IID__IUIRefreshEvent; }
    virtual int32_t UIItemChanged(IUnknown* item, int what) = 0;
};

struct _IUIContainerEvents : IUnknown {
    static const IID& Iid() { return IID__IUIContainerEvents; }
    virtual int32_t NodeSelect(IUnknown* node, int a, int b, int c, IUnknown* data) = 0;
    // Most subscribers hear selections only.
    virtual int32_t NodeDrag(IUnknown* /*source*/, int /*a*/, int /*b*/, int /*c*/, IUnknown* /*node*/) { return S_OK; }
    virtual int32_t NodeChanged(IUnknown* /*source*/, IUnknown* /*node*/) { return S_OK; }
};
