// The small picture that stands for a component in lists and on buttons: a PNG
// file named after the component, in the icons folder of the installation's
// shared files ("CommonPath" of the registry's Workspace section).
#pragma once
#include "runtime/VXCore.h"

// A new reference to the picture of the component that object belongs to, loaded
// and ready to draw; null when the component has no name or its picture can't be
// read. object may be a moniker (its object counts) or a contained object (its
// container counts).
IRenderableObject* IMAGECreate(IUnknown* object);
