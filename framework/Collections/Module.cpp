// Collections: strings, variants, collections, parameters.
#include <iterator>

#include "framework/Collections/CreatableString.h"
#include "framework/Collections/InputParameter.h"
#include "framework/Collections/InputParameters.h"
#include "framework/Collections/ParametersCreatable.h"
#include "framework/Collections/Variant.h"
#include "framework/Collections/SimpleCollection.h"
#include "framework/Collections/StringCollection.h"
#include "framework/Collections/SuperCollection.h"
#include "runtime/Module.h"

namespace {

const ComponentEntry kComponents[] = {
    {REFLiteral(L"CreatableString"), &CObject<CCreatableString>::_CreateInstance},
    {REFLiteral(L"Variant"), &CObject<CVariant>::_CreateInstance},
    {REFLiteral(L"ParametersCreatable"), &CObject<CParametersCreatable>::_CreateInstance},
    {REFLiteral(L"SimpleCollection"), &CObject<CSimpleCollection>::_CreateInstance},
    {REFLiteral(L"StringCollection"), &CObject<CStringCollection>::_CreateInstance},
    {REFLiteral(L"SuperCollection"), &CObject<CSuperCollection>::_CreateInstance},
    {REFLiteral(L"InputParameter"), &CObject<CInputParameter>::_CreateInstance},
    {REFLiteral(L"InputParameters"), &CObject<CInputParameters>::_CreateInstance},
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
