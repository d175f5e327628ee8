// The folder stream's content in memory: folders of named items, in the order in
// which they were written. The archive is only its form on disk.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "runtime/REFString.h"

// What an item holds. Texts and numbers are kept as UTF-8 text; the kind tells a
// variant what it gets back.
enum class FolderItemKind : uint8_t { Data, Text, Integer, Double, Folder };

struct FolderNode;

struct FolderItem {
    std::wstring m_Name;
    FolderItemKind m_Kind = FolderItemKind::Data;
    std::vector<unsigned char> m_Bytes;   // every kind but Folder
    std::shared_ptr<FolderNode> m_Folder; // Folder only

    bool IsFolder() const { return m_Kind == FolderItemKind::Folder; }
};

struct FolderNode {
    // The component whose object was saved into this folder; empty for a plain folder.
    std::wstring m_Component;
    std::vector<FolderItem> m_Items;

    // The index of the item of that name (exact, case and all), or -1.
    int Find(tagREFString name) const;
    // The index of the position-th sub-folder, counting folders only, or -1.
    int FindFolder(int position) const;
    // The item of that name (a valid one), emptied and of the kind given. An item that was there
    // keeps its place, so rewriting a key doesn't change the order; a new one goes last.
    FolderItem& Put(tagREFString name, FolderItemKind kind);
    // A new empty sub-folder under that name, in place of whatever was there.
    std::shared_ptr<FolderNode> PutFolder(tagREFString name);
};

// A name an item can have: at least one character.
bool FolderNameValid(tagREFString name);
