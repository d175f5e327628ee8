// How a module reaches its siblings: the shared component collection, loading a
// sibling's creation function, and creating components by name.
#pragma once
#include "runtime/SmartPtr.h"
#include "runtime/VXCore.h"

// The collection of all components of the process, as this module holds it.
extern SmartPtr<IComponentCollection> gGlobalComponentCollection;

// One reference for the caller, or null. Loads "CollectionsEx" when no collection was given.
IComponentCollection* GLOBALComponents();

// Opens ./_binlinux/<module>.so and asks it for a component's creation function.
VXCreateFunction MODULECreateFunction(tagREFString module, tagREFString component);

// A new object of the named component through the collection, or null.
IUnknown* CreateObject(tagREFString name, IID* iid);

// The collection's record of a component, or null.
IComponentString* GetComponentString(IString* name);

// A component that a module's CreateFunction can hand out.
struct ComponentEntry {
    tagREFString m_Name;
    VXCreateFunction m_Create;
};

// The body of every module's exported functions.
int32_t ModuleInitialize(IComponentCollection* collection);
int32_t ModuleCreateFunction(const ComponentEntry* table, int count, tagREFString name, void** createFunction);

#define VX_EXPORT extern "C" __attribute__((visibility("default")))
