// Two small scanners for tags in angle brackets: one element by name, and the
// attributes of a tag one by one. Not an XML reader: no nesting, no escapes.
#pragma once
#include "runtime/REFString.h"
#include "runtime/Result.h"

int32_t XMLGetTAGGED(CREFString& text, CREFString& tag, CREFString& attributes, CREFString& content, short advance);
int32_t XMLGetNextTAGAttribute(CREFString& attributes, CREFString& name, CREFString& value);
