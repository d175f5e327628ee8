// Cached factories of framework objects: each returns a new object the caller owns.
#pragma once
#include "runtime/VXCore.h"

struct BASEObject {
    static ISuperCollection* CreateNamedCollection();
    static ISimpleCollection* CreateSimpleCollection();
    static IParametersCreatable* CreateParameters();
    static IRegistry* CreateRegistry();
    static IRegistryEx* CreateRegistryEx();
};

struct UIObject {
    static IUIVerbCollection* CreateUIVerbCollection();
    static IButton* CreateUIButton();
    static IButtonCollection* CreateUIButtonCollection();
    static IVXText* CreateVXText();
    static IVXRenderer* CreateVXRenderer();
    static IVXRenderStyle* CreateVXRenderStyle();
};

struct VXCoreObject {
    static IVXTextReference* CreateVXTextReference();
};
