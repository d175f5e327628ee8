// CollectionsEx: the component collection and records, registry, streams, files, text references.
#include <iterator>

#include "framework/CollectionsEx/ASCIIStream.h"
#include "framework/CollectionsEx/ActiveWorkspace.h"
#include "framework/CollectionsEx/ComponentString.h"
#include "framework/CollectionsEx/DataStream.h"
#include "framework/CollectionsEx/FileInfo.h"
#include "framework/CollectionsEx/FolderStream.h"
#include "framework/CollectionsEx/GlobalComponentCollection.h"
#include "framework/CollectionsEx/INIFile.h"
#include "framework/CollectionsEx/Registry.h"
#include "framework/CollectionsEx/StringTable.h"
#include "framework/CollectionsEx/TextReference.h"
#include "framework/CollectionsEx/XMLFile.h"
#include "framework/CollectionsEx/XMLStream.h"
#include "runtime/Module.h"

namespace {

const ComponentEntry kComponents[] = {
    {REFLiteral(L"GlobalComponentCollection"), &CGlobalComponentCollection::CreateShared},
    {REFLiteral(L"ComponentString"), &CObject<CComponentString>::_CreateInstance},
    {REFLiteral(L"FolderStream"), &CObject<CFolderStream>::_CreateInstance},
    {REFLiteral(L"FileInfo"), &CObject<CFileInfo>::_CreateInstance},
    {REFLiteral(L"XMLStream"), &CObject<CXMLStream>::_CreateInstance},
    {REFLiteral(L"XMLStreamEx"), &CObject<CXMLStream>::_CreateInstance},
    {REFLiteral(L"DataStream"), &CObject<CDataStream>::_CreateInstance},
    {REFLiteral(L"Registry"), &CObject<CRegistry>::_CreateInstance},
    {REFLiteral(L"ActiveWorkspace"), &CActiveWorkspace::CreateShared},
    {REFLiteral(L"INIFile"), &CObject<CINIFile>::_CreateInstance},
    {REFLiteral(L"ASCIIStream"), &CObject<CASCIIStream>::_CreateInstance},
    {REFLiteral(L"StringTable"), &CObject<CStringTable>::_CreateInstance},
    {REFLiteral(L"XMLFile"), &CObject<CXMLFile>::_CreateInstance},
    {REFLiteral(L"VXTextReference"), &CTextReference::_CreateInstance},
    {REFLiteral(L"CSVStream"), &CObject<CDataStream>::_CreateInstance},
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
