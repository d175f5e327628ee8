// Collections: strings, variants, collections, parameters.
#include <iterator>

#include "framework/Collections/CreatableString.h"
#include "framework/Collections/Variant.h"
#include "runtime/Module.h"

namespace {

const ComponentEntry kComponents[] = {
    {REFLiteral(L"CreatableString"), &CObject<CCreatableString>::_CreateInstance},
    {REFLiteral(L"Variant"), &CObject<CVariant>::_CreateInstance},
};

} // namespace

VX_EXPORT int32_t CreateFunction(tagREFString name, void** createFunction)
{
    return ModuleCreateFunction(kComponents, int(std::size(kComponents)), name, createFunction);
}

VX_EXPORT int32_t InitializeModule(void* /*reserved*/, IComponentCollection* collection)
{
    return ModuleInitialize(collection);
}
