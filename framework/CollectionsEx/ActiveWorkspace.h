// The workspace open in the application: one for the whole process. Its file name
// is the open workspace's, empty while none is open; paths of the application are
// taken from beside it.
#pragma once
#include "persistence/FileArchiveImpl.h"
#include "runtime/ObjectInfo.h"

class CActiveWorkspace : public CObject<CActiveWorkspace>,
                         public IObjectInfoImpl<CActiveWorkspace>,
                         public IFileArchiveImpl<CActiveWorkspace, IFileArchive>,
                         public IWorkspace {
public:
    static constexpr wchar_t kObjectName[] = L"ActiveWorkspace";
    using Interfaces =
        QiList<Entry<IObjectInfo>, Chain<IFileArchiveImpl<CActiveWorkspace, IFileArchive>>, Entry<IWorkspace>>;

    // The creation function: hands out the one workspace of the process.
    static int32_t CreateShared(void* outer, IID* iid, void** object);

    void FinalRelease() override;

    // What a workspace file holds is the host's matter: nothing to read or write here.
    int32_t Load() override { return E_NOTIMPL; }
    int32_t Save() override { return E_NOTIMPL; }

    // Remembers the node being dragged until the next drag begins; a null node ends it.
    int32_t BeginDrag(IUIDropSource* source, int a, int b, IUnknown* node) override;

private:
    SmartPtr<IUnknown> m_DragNode;
};
