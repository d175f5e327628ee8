// The face of one folder of a folder stream: named items, blocks, sub-folders and
// objects, and the folder's entries as a named collection. The root stream and
// every sub-folder handed out share this; a sub-folder object keeps its part of
// the tree alive on its own.
#pragma once
#include <memory>
#include <string>

#include "framework/CollectionsEx/FolderTree.h"
#include "runtime/Object.h"
#include "runtime/VXCore.h"

class CFolderStreamBase : public IFolderStream, public INamedCollection {
public:
    using Interfaces = QiList<Entry<IFolderStream>, Entry<IDataStream, IFolderStream>, Entry<INamedCollection>,
                              Entry<ISimpleCollection, INamedCollection>>;

    // IDataStream. SetBuffer reads an archive from memory into this folder (null
    // empties it); Write appends to the block begun last, and GetBuffer gives the
    // block created or opened last.
    int32_t SetBuffer(void* data, int bytes, int mode) override;
    int32_t Skip(int bytes, int mode, int reserved) override;
    int32_t GetBuffer(void** data, unsigned long* size) override;
    int32_t Write(const void* data, int size, int reserved) override;

    // IFolderStream
    int32_t CreateFolder(IString* name, int mode, IDataStream** out) override;
    int32_t CreateBlock(IString* name) override;
    int32_t WriteData(IString* name, const void* data, int size, int reserved) override;
    int32_t WriteString(IString* name, IUnknown* value) override;
    int32_t WriteObject(IString* name, IUnknown* object, int flags) override;
    int32_t OpenBlock(IString* name) override;
    int32_t ReadData(IString* name, void* data, int size, int reserved) override;
    int32_t ReadString(IString* name, IUnknown* value) override;
    int32_t OpenFolder(IUnknown* key, int mode, IDataStream** out) override;
    int32_t ReadObject(IString* name, IUnknown** object, int flags) override;

    // INamedCollection over the folder's items: a sub-folder's item is its stream,
    // any other item's is a string of its text.
    int32_t get_Count(int* count) override;
    int32_t get_Item(int index, IUnknown** item) override;
    int32_t get_Index(IUnknown* key, int* index) override;
    int32_t get_ItemName(int index, IString** name) override;
    int32_t Rename(int index, IString* name) override;
    int32_t CollectionLock() override { return S_OK; }
    int32_t CollectionUnlock() override { return S_OK; }
    // The sense of a result code: 1, no lock is ever held.
    int32_t IsCollectionLocked() override { return 1; }

protected:
    CFolderStreamBase() : m_Node(std::make_shared<FolderNode>()) {}
    ~CFolderStreamBase() = default;

    // Replaces the folder's items by what the archive holds; the block is forgotten.
    int32_t TakeArchive(const unsigned char* bytes, size_t size);

    std::shared_ptr<FolderNode> m_Node;

private:
    FolderItem* Item(IString* name);
    FolderItem* Block();
    int32_t HandOutFolder(std::shared_ptr<FolderNode> node, IDataStream** out);

    // The block that Write fills and GetBuffer shows, by name; m_BlockIndex is where
    // it was last seen.
    std::wstring m_Block;
    bool m_HasBlock = false;
    size_t m_BlockIndex = 0;
};
