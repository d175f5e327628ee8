// How a file's bytes are recognised as 16-bit text, UTF-8, or single bytes.
#pragma once
#include <cstddef>

enum class TextForm { Wide16, UTF8, Bytes };

// The form of count bytes (at least 1) in a text mode: FILELOAD_TEXT trusts anything
// that isn't 16-bit to be UTF-8, FILELOAD_TEXTCHECK and above test it first.
TextForm TextDetectForm(const unsigned char* bytes, size_t count, short mode);

// True when the bytes are UTF-8 by the reader's own rules, which are a little
// stricter than UTF-8 at two edges: the two-byte value 0x7FF, and a four-byte
// character that ends the text.
bool TextIsValidUTF8(const unsigned char* bytes, size_t count);
