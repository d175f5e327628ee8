// The name mixin: every class is known by the name it is created by.
#pragma once
#include "runtime/interfaces/Unknown.h"

// T provides kObjectName, a wide literal.
template <class T> struct IObjectInfoImpl : IObjectInfo {
    static constexpr tagREFString ObjectName() { return REFLiteral(T::kObjectName); }

    int32_t GetName(int /*index*/, tagREFString* name) override
    {
        if (!name)
            return E_POINTER;
        *name = ObjectName();
        return S_OK;
    }
};
