// Formatting into the caller's wide buffer.
#include <cwchar>

#include "runtime/ValueConversion.h"

// size counts wide characters. The text is always terminated inside the buffer:
// on an overflow vswprintf gives -1 and leaves what fitted unterminated, so the
// terminator goes on the last element and the cut text stays readable.
int _swprintf(wchar_t* buffer, unsigned long size, const wchar_t* format, ...)
{
    if (!buffer || size == 0)
        return -1;
    if (!format) {
        buffer[0] = L'\0';
        return 0;
    }
    std::va_list arguments;
    va_start(arguments, format);
    int count = std::vswprintf(buffer, size, format, arguments);
    va_end(arguments);
    if (count < 0 || static_cast<unsigned long>(count) >= size)
        buffer[size - 1] = L'\0';
    else
        buffer[count] = L'\0';
    return count;
}
