// UTF-8 read the forgiving way: no byte is refused and nothing is checked, so any
// bytes give some text. The string maker and the file reader decode alike.
#pragma once
#include <cstddef>

// Decodes the character that starts at bytes[0]; remaining (at least 1) counts the
// bytes left from there. Gives how many bytes it took: at least 1, at most remaining.
size_t UTF8DecodeLenient(const unsigned char* bytes, size_t remaining, wchar_t* character);
