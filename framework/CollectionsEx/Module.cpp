// CollectionsEx: the component collection and records, registry, streams, files.
#include <iterator>

#include "framework/CollectionsEx/ComponentString.h"
#include "framework/CollectionsEx/GlobalComponentCollection.h"
#include "runtime/Module.h"

namespace {

const ComponentEntry kComponents[] = {
    {REFLiteral(L"GlobalComponentCollection"), &CGlobalComponentCollection::CreateShared},
    {REFLiteral(L"ComponentString"), &CObject<CComponentString>::_CreateInstance},
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
