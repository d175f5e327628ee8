#include "host/HostText.h"

#include "runtime/UTF8Write.h"

std::string ToUtf8(const wchar_t* text, int length)
{
    std::string out;
    UTF8Append(out, text, length);
    return out;
}

std::string ToUtf8(IUnknown* string)
{
    CREFString view(string);
    return view.m_Length > 0 ? ToUtf8(view.m_Buffer, view.m_Length) : std::string();
}
