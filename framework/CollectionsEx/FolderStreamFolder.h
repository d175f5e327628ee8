// A sub-folder of a folder stream, as CreateFolder, OpenFolder, WriteObject and the
// folder's collection hand it out. It holds its part of the tree, which stays
// alive as long as the sub-folder does, even when the root is gone.
#pragma once
#include "framework/CollectionsEx/FolderStreamBase.h"

class CFolderStreamFolder : public CObject<CFolderStreamFolder>, public CFolderStreamBase {
public:
    using Interfaces = QiList<Chain<CFolderStreamBase>>;

    // A new stream on that folder, with one reference for the caller.
    static int32_t Create(std::shared_ptr<FolderNode> node, IDataStream** out)
    {
        IFolderStream* folder = nullptr;
        int32_t result =
            _CreateInstance(nullptr, const_cast<IID*>(&IID_IFolderStream), reinterpret_cast<void**>(&folder));
        if (result < 0)
            return result;
        static_cast<CFolderStreamFolder*>(folder)->m_Node = std::move(node);
        *out = folder;
        return S_OK;
    }
};
