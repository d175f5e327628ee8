// Element names in the XML text. A name in this system may be any text ("1",
// "Verse 1"), but in the file it has to be an XML name: what an XML name can't
// hold is written as _xHHHH_ (or _xHHHHHHHH_) and reads back as the same text.
#pragma once
#include <cstddef>
#include <string>

#include "runtime/REFString.h"

// The characters that may begin an XML name, and those that may follow. The
// colon is left out: namespace-aware readers give it a meaning of its own.
bool XMLIsNameStart(wchar_t c);
bool XMLIsNameChar(wchar_t c);

// Appends the file form of a name.
void XMLEncodeName(tagREFString name, std::wstring& out);

// Appends the name that a file form stands for. False, with nothing appended,
// when the file form holds no escape and so is the name itself.
bool XMLDecodeName(const wchar_t* name, size_t length, std::wstring& out);
