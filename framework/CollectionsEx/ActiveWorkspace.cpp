#include "framework/CollectionsEx/ActiveWorkspace.h"

int32_t CActiveWorkspace::CreateShared(void* outer, IID* iid, void** object)
{
    static SmartPtr<IUnknown> gShared;
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (!gShared) {
        int32_t result = _CreateInstance(outer, const_cast<IID*>(&IID_IUnknown), gShared.ReceiveVoid());
        if (result < 0)
            return result;
    }
    return iid ? gShared->QueryInterface(*iid, object) : E_POINTER;
}

void CActiveWorkspace::FinalRelease() { m_DragNode.Clear(); }

int32_t CActiveWorkspace::BeginDrag(IUIDropSource* /*source*/, int /*a*/, int /*b*/, IUnknown* node)
{
    // A drag with no node ends the one under way: the workspace lets go of what it held.
    m_DragNode = SmartPtr<IUnknown>(node);
    return S_OK;
}
