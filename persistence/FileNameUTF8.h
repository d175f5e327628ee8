// File names go to the C library as UTF-8 in a small local buffer.
#pragma once
#include "runtime/REFString.h"

// Room for 254 bytes of name and the terminator.
constexpr int kFileNameBytes = 255;

// Writes the name as UTF-8, terminated. The byte counts change one value below
// UTF-8's own (0x7FF takes three bytes, 0xFFFF four), as the files written so far
// were named that way. A character that no longer fits ends the name there.
void FileNameToUTF8(tagREFString name, char (&path)[kFileNameBytes]);
