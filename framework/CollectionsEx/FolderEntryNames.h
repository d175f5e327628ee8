// How items are named and marked inside the archive: a folder is a directory
// entry, an item a file entry, each name one component of the entry's path.
#pragma once
#include <cstddef>
#include <string>
#include <vector>

#include "framework/CollectionsEx/FolderTree.h"

// One name as one path component: UTF-8, with "%", "/", "\\" and control characters
// written as %XX so that any name survives, and "." and ".." escaped so that no tool
// that unpacks the archive takes them for folders of its own.
std::string EncodeEntryName(const std::wstring& name);

// Cuts an entry's path into item names. *folder tells a directory entry (a path that
// ends with "/"). False for a path with an empty component: such an archive is damaged.
bool DecodeEntryPath(const char* path, std::vector<std::wstring>* names, bool* folder);

// The file entry's comment tells what kind of value an item holds; raw data has none.
const char* KindComment(FolderItemKind kind);
FolderItemKind KindFromComment(const char* comment, size_t length);
