// Everything a host needs to use the module: result codes, text views, identifiers,
// every interface, and the owning pointer.
#pragma once
#include "runtime/IID.h"
#include "runtime/REFString.h"
#include "runtime/Result.h"
#include "runtime/SmartPtr.h"
#include "runtime/interfaces/Collections.h"
#include "runtime/interfaces/Components.h"
#include "runtime/interfaces/Content.h"
#include "runtime/interfaces/Drawing.h"
#include "runtime/interfaces/Parameters.h"
#include "runtime/interfaces/Settings.h"
#include "runtime/interfaces/Streams.h"
#include "runtime/interfaces/Unknown.h"
#include "runtime/interfaces/UserInterface.h"
#include "runtime/interfaces/Values.h"

// The creation function of a component.
using VXCreateFunction = int32_t (*)(void* outer, IID* iid, void** object);

extern "C" {
// Stores the creation function of the named component; E_FAIL for an unknown name.
typedef int32_t (*VXCreateFunctionLookup)(tagREFString name, void** createFunction);
// Hands the module the component collection shared by all modules.
typedef int32_t (*VXInitializeModule)(void* reserved, IComponentCollection* collection);
}
