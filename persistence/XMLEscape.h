// Element text in the XML file. Writing turns what would read as markup, and the
// control characters that a file can't show, into references; reading turns every
// reference back, takes CDATA sections as they stand and drops comments.
#pragma once
#include <cstddef>
#include <string>

#include "runtime/REFString.h"

// Appends the file form of a text.
void XMLEscapeText(tagREFString text, std::wstring& out);

// True when a file form holds something that reading changes ("&" or "<").
bool XMLHasMarkup(const wchar_t* text, size_t length);

// Appends the text that a file form stands for. A reference that names nothing
// known stays as it is written.
void XMLUnescapeText(const wchar_t* text, size_t length, std::wstring& out);
