// An XML tree seen as parameters: one entry for each child element, in order, under
// its name. An element with children of its own is an entry whose item is the
// parameters of those children; any other is an entry whose item is its text. The
// attributes of an element are the entry's descriptor, a collection of names and
// values; inside a nested item they also stand first, flagged
// PARAMETER_XMLATTRIBUTE, so that the reader of the item alone sees them.
#pragma once
#include "framework/CollectionsEx/XMLDocument.h"
#include "runtime/SmartPtr.h"
#include "runtime/VXCore.h"

// The parameters of the children of `element`; null when no parameters can be made.
SmartPtr<IParameters> XMLParametersOf(CXMLDocument& document, int32_t element);
