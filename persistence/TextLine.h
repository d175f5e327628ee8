// The two trims and the line of text on which all song and Bible text work depends.
#pragma once
#include "runtime/REFString.h"

// Drops leading white space and control characters, and the values 239 and 254:
// the stray first bytes of byte order marks.
void TextTrimLeft(CREFString& text);
// Drops trailing characters below 33, and 127.
void TextTrimRight(CREFString& text);
// What lies before the next LF; the rest moves behind it. A CR stays in the line.
// False when the rest is empty.
bool TextNextLine(CREFString& rest, CREFString* line);
