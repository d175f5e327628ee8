// VXBook: the books of XML Bibles.
#include <iterator>

#include "framework/VXBook/VXBook.h"
#include "runtime/Module.h"

namespace {

const ComponentEntry kComponents[] = {
    {REFLiteral(L"VXBook"), &CObject<CVXBook>::_CreateInstance},
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
