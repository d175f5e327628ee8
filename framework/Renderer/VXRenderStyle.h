// The renderer's style component: a render style that lives in streams by itself.
// The same class is the application's default style, "UIDefault", of which the
// process has one.
#pragma once
#include "presentation/RenderStyleImpl.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"

class CVXRenderStyle : public CObject<CVXRenderStyle>,
                       public IObjectInfoImpl<CVXRenderStyle>,
                       public IVXRenderStyleImpl,
                       public IDataPersist {
public:
    static constexpr wchar_t kObjectName[] = L"VXRenderStyle";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXRenderStyle>, Entry<IDataPersist>>;

    // The creation function of "UIDefault": every call gives the same style.
    static int32_t CreateShared(void* outer, IID* iid, void** object);

    // One pair serves both faces: persisting the object is persisting its style.
    int32_t Save(IDataStream* stream, int flags) override { return IVXRenderStyleImpl::Save(stream, flags); }
    int32_t Load(IDataStream* stream, int flags) override { return IVXRenderStyleImpl::Load(stream, flags); }
};
