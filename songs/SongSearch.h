// The match test of the song search: one pass, case folded by the C locale.
#pragma once
#include "runtime/REFString.h"

// True if needle occurs in haystack, each character folded by tolower when it lies
// from -128 to 255. One pass: a partial match that fails restarts at the character
// that broke it, never behind it, so "aab" is not found in "aaab". Empty: no match.
bool ContainsNoCase(CREFString haystack, CREFString needle);
