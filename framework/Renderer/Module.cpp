// Renderer: drawing and the styles it draws with.
#include <iterator>

#include "framework/Renderer/QIFFileEx.h"
#include "framework/Renderer/VXRenderStyle.h"
#include "framework/Renderer/VXRenderer.h"
#include "framework/Renderer/VXText.h"
#include "runtime/Module.h"

namespace {

const ComponentEntry kComponents[] = {
    {REFLiteral(L"VXRenderStyle"), &CObject<CVXRenderStyle>::_CreateInstance},
    {REFLiteral(L"UIDefault"), &CVXRenderStyle::CreateShared},
    {REFLiteral(L"VXRenderer"), &CObject<CVXRenderer>::_CreateInstance},
    {REFLiteral(L"VXText"), &CObject<CVXText>::_CreateInstance},
    {REFLiteral(L"QIFFileEx"), &CObject<CQIFFileEx>::_CreateInstance},
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
