#include "framework/Renderer/VXRenderStyle.h"

int32_t CVXRenderStyle::CreateShared(void* outer, IID* iid, void** object)
{
    if (!object)
        return E_POINTER;
    // Made on first demand and kept until the process ends, so that a change to
    // the default is seen by every later caller.
    static SmartPtr<IUnknown> gShared;
    if (!gShared) {
        int32_t result = _CreateInstance(outer, const_cast<IID*>(&IID_IUnknown), gShared.ReceiveVoid());
        if (result < 0)
            return result;
    }
    *object = nullptr;
    return iid ? gShared->QueryInterface(*iid, object) : E_POINTER;
}
