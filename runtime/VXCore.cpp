// The module's entry: the host loads it, hands it the component collection, and
// asks it for creation functions by name.
#include <iterator>

#include "runtime/Module.h"
#include "runtime/ModuleClasses.h"

namespace {

// In lookup order. "VXBibleChapter" lives only inside a book and is not listed.
const ComponentEntry kComponents[] = {
    {REFLiteral(L"VXSong"), &CreateVXSong},
    {REFLiteral(L"VXSongVerse"), &CreateVXSongVerse},
    {REFLiteral(L"VXBibleBook"), &CreateVXBibleBook},
    {REFLiteral(L"VXSongConvert"), &CreateVXSongConvert},
    {REFLiteral(L"VXBible"), &CreateVXBible},
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
