// A typed Bible reference, such as "John 3:16-18", read into its parts.
#pragma once
#include "runtime/REFString.h"

struct BibleReference {
    // The book's name as typed: a view into the text that was read.
    CREFString m_Book;
    // Zero-based; -1 when the text names none.
    int32_t m_Chapter = -1;
    int32_t m_Verse = -1;
    // BIBLE_VERSES_TO_END for a range without a usable end.
    int32_t m_Count = 1;
};

// True when the shorter of the two is the start of the other, ignoring case by
// towlower; an empty one matches nothing. Titles and chapter headings match so.
bool BibleStartsAlike(const CREFString& a, const CREFString& b);

// Reads a reference: the name up to the first digit that doesn't open the text, the
// chapter, the verse behind ":", "." or a space, and an optional "-" and end.
BibleReference BibleParseReference(CREFString text);

// The verse count of a range whose verse number opens `from`: 1 without a "-", the
// end less `verse` when that is above 0, else through the end of the chapter.
int32_t BibleRangeCount(CREFString from, int32_t verse);

// Cuts the next piece of a list of references at the first of "\n\r,;": the piece
// trimmed, whether a comma ended it, and the rest behind the delimiter and blanks.
CREFString BibleNextPiece(CREFString& rest, bool* comma);
