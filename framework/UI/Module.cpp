// UI: the headless user interface: trees, menus, dialogs and message windows.
#include <iterator>

#include "framework/UI/MessageWindow.h"
#include "framework/UI/UIManagerCollection.h"
#include "framework/UI/UIPropertyPageCollection.h"
#include "framework/UI/UITree.h"
#include "framework/UI/UIUtils.h"
#include "framework/UI/UIVerb.h"
#include "runtime/Module.h"

namespace {

const ComponentEntry kComponents[] = {
    {REFLiteral(L"MessageWindow"), &CObject<CMessageWindow>::_CreateInstance},
    {REFLiteral(L"UITree"), &CObject<CUITree>::_CreateInstance},
    {REFLiteral(L"UIVerbCollection"), &CObject<CUIVerbCollection>::_CreateInstance},
    {REFLiteral(L"UIManagerCollection"), &CObject<CUIManagerCollection>::_CreateInstance},
    {REFLiteral(L"UIUtils"), &CObject<CUIUtils>::_CreateInstance},
    {REFLiteral(L"UIPropertyPageCollection"), &CObject<CUIPropertyPageCollection>::_CreateInstance},
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
