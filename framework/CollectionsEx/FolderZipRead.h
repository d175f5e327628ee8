// A zip archive in memory read back into a folder tree.
#pragma once
#include <cstddef>

#include "framework/CollectionsEx/FolderTree.h"

// Bounds on what an archive may make us hold, checked before anything is inflated.
constexpr size_t kFolderItemLimit = size_t(256) << 20;   // one item
constexpr size_t kFolderArchiveLimit = size_t(1) << 30; // all items together, and the file
constexpr size_t kFolderEntryLimit = size_t(1) << 20;   // entries
constexpr size_t kFolderDepthLimit = 256;               // folders within folders

// Fills *root from the archive. A damaged or truncated archive, an entry past the
// bounds, a name given twice or an item standing where a folder should be is a
// failure, and *root is then left as it was.
int32_t FolderTreeFromZip(const unsigned char* bytes, size_t size, FolderNode* root);
