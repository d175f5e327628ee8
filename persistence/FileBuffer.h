// The module's whole contact with the file system for content: a file read into one
// buffer and turned into wide text whatever its encoding, and a buffer written back.
#pragma once
#include "runtime/REFString.h"
#include "runtime/Result.h"

// Modes of FileArchiveLoad.
constexpr short FILELOAD_RAW = 0;       // bytes, untouched
constexpr short FILELOAD_TEXT = 1;      // wide text; what isn't 16-bit is read as UTF-8, leniently
constexpr short FILELOAD_TEXTCHECK = 2; // wide text; invalid UTF-8 is read byte by byte

// On success *data is a buffer for delete[] (bytes, or wchar_t elements in the text
// modes) and *size its count. S_FALSE: the text was decoded as UTF-8.
int32_t FileArchiveLoad(tagREFString name, void** data, unsigned long* size, short mode, int maxBytes);

// size is in bytes; with wide set, data holds 32-bit characters written as 16-bit
// units (with a byte order mark unless appending).
int32_t FileArchiveSave(tagREFString name, unsigned char* data, unsigned long size, short wide, short append);
