#include "framework/Collections/InputParameters.h"

namespace {

constexpr wchar_t kFolderName[] = L"InputParameters";

} // namespace

int32_t CInputParameters::get_Item(int index, IUnknown** item)
{
    if (!item)
        return E_POINTER;
    if (get_ItemDescriptor(index, item) >= 0)
        return S_OK;
    return Parameters::get_Item(index, item);
}

int32_t CInputParameters::Add(IString* name, IUnknown* value, IUnknown* descriptor, int flags)
{
    CollectionLock();
    int32_t result = AddNOLOCK(name, value, descriptor, flags);
    CollectionUnlock();
    return result;
}

int32_t CInputParameters::Save(IDataStream* stream, int flags)
{
    if (QueryAs<IXMLStream>(stream))
        return Params_SaveXMLUnk(stream, flags);
    auto folder = QueryAs<IFolderStream>(stream);
    if (!folder)
        return S_OK;
    // Every input is kept whole, whatever the compact mode would drop.
    SmartPtr<IDataStream> own;
    folder->CreateFolder(SmartPtr<IString>::Adopt(ISCreate(kFolderName)), 0, own.Receive());
    return own ? Params_SaveFolderStream(own, flags & ~PARAMS_COMPACT) : S_OK;
}

int32_t CInputParameters::Load(IDataStream* stream, int flags)
{
    if (QueryAs<IXMLStream>(stream))
        return Params_LoadXMLUnk(stream, flags | PARAMS_REPLACE);
    auto entries = QueryAs<INamedCollection>(stream);
    int index = -1;
    SmartPtr<IUnknown> own;
    if (!entries || entries->get_Index(SmartPtr<IString>::Adopt(ISCreate(kFolderName)), &index) < 0 ||
        entries->get_Item(index, own.Receive()) < 0)
        return S_OK;
    return Params_LoadFolderStream(own.As<IDataStream>(), flags | PARAMS_REPLACE);
}
