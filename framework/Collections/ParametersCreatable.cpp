#include "framework/Collections/ParametersCreatable.h"

int32_t CParametersCreatable::Add(IString* name, IUnknown* value, IUnknown* descriptor, int flags)
{
    CollectionLock();
    int32_t result = AddNOLOCK(name, value, descriptor, flags);
    CollectionUnlock();
    return result;
}
