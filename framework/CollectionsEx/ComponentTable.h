// Which module file provides which component: the knowledge of the whole process.
#pragma once
#include "runtime/REFString.h"

struct ComponentLocation {
    const wchar_t* m_Component;
    const wchar_t* m_Module;
};

const ComponentLocation* ComponentTable(int* count);
// The module that provides a component, or null.
const wchar_t* ComponentModule(tagREFString component);
