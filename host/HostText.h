// Text between the host's byte world (arguments, files, the terminal) and the
// module's wide text.
#pragma once
#include <string>

#include "runtime/VXCore.h"

std::string ToUtf8(const wchar_t* text, int length);
std::string ToUtf8(const std::wstring& text);
std::string ToUtf8(IUnknown* string);
// Lenient: a malformed byte stands for itself.
std::wstring FromUtf8(const std::string& text);
