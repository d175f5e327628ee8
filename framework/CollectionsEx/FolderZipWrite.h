// The folder tree written as a zip archive, in memory.
#pragma once
#include <vector>

#include "framework/CollectionsEx/FolderTree.h"

// Folders become directory entries (their comment names the component saved in
// them), items file entries, depth first in the tree's order. With compress the
// items are deflated, otherwise stored.
int32_t FolderTreeToZip(const FolderNode& root, bool compress, std::vector<unsigned char>* archive);
