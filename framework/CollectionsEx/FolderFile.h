// The folder stream's file: read whole, and replaced whole so that a failed save
// loses nothing.
#pragma once
#include <cstddef>
#include <string>
#include <vector>

// The file's bytes; a failure for a file that can't be read or is larger than limit.
int32_t ReadWholeFile(const std::string& path, size_t limit, std::vector<unsigned char>* bytes);

// Writes the bytes to a new file in the target's folder, flushes it to the disk and
// renames it over the target. On any failure the new file is removed and the target
// is as it was. A target that exists keeps its permissions.
int32_t ReplaceFile(const std::string& path, const unsigned char* bytes, size_t size);
