#include <cwchar>

#include "runtime/SmartPtr.h"
#include "runtime/ValueConversion.h"

IString* ISCreate(const wchar_t* text)
{
    ICreatableString* string = CREFString::CreateString();
    if (string && text)
        string->Clone(CREFString(text));
    return string;
}

IString* ISCreate(const tagREFString& text)
{
    ICreatableString* string = CREFString::CreateString();
    if (string)
        string->Clone(text);
    return string;
}
