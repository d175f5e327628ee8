// Text from the module's wide characters to the host's bytes (the terminal, files).
#pragma once
#include <string>

#include "runtime/VXCore.h"

std::string ToUtf8(const wchar_t* text, int length);
std::string ToUtf8(IUnknown* string);
