// The grammar of a long Bible text, one line at a time: a book's name on a line of
// its own, a chapter number on a line of its own, and numbered verses.
#pragma once
#include "runtime/REFString.h"

enum class LongTextLine {
    Blank,   // nothing after trimming
    Verse,   // a digit first, and the first word ends with "."
    Chapter, // a number alone, of one character or with a digit second
    Other,   // a title when one is expected, else ignored
};

// `trimmed` is the line with blanks taken off both ends.
LongTextLine LongTextClassify(const CREFString& trimmed);
