// Values into strings, and strings into numbers, colours and variants.
#pragma once
#include <cstdarg>

#include "runtime/REFString.h"
#include "runtime/interfaces/Values.h"

// Each yields a new string with one reference for the caller.
IString* ISCreate(const wchar_t* text);
IString* ISCreate(const tagREFString& text);
IString* ISCreate(const char* text, int length);
IString* ISCreate(int value);
IString* ISCreate(double value, short decimals);
IString* ISCreateHex(unsigned int value);
IString* ISCreate(IVariant* variant);
IString* ISCreate(IVariant* variant, short format);

int _IS2Integer(CREFString text, int base);
// The value of one hexadecimal digit, either case; -1 for any other character.
int HexDigitValue(wchar_t c);
unsigned int _IS2Color(CREFString text, int base);
double _IS2Double(CREFString text);

// The kind of number a text holds, VARIANT_INTEGER or VARIANT_DOUBLE, or VARIANT_NONE
// when it holds no number: a sign, digits, at most one point, and white space only
// behind digits. Without a point, more than 9 characters are no number.
short ISNumberKind(const tagREFString& text);

// A variant of the number or text that a view holds; one reference for the caller.
// The view is left-trimmed in place.
IVariant* IVCreateConvert(CREFString& text);

// vswprintf that never writes outside the buffer and always terminates the text.
int _swprintf(wchar_t* buffer, unsigned long size, const wchar_t* format, ...);
