// Reads every character of a text view, so that a view past its buffer shows under
// the address checker.
#pragma once
#include "runtime/VXCore.h"

inline void Touch(IUnknown* object)
{
    wchar_t sum = 0;
    CREFString view(object);
    for (int32_t i = 0; i < view.m_Length; ++i)
        sum = wchar_t(sum ^ view.m_Buffer[i]);
    (void)sum;
}
