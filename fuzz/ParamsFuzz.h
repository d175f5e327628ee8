// What the parameter fuzz targets share: a collection to load into, and every
// stream form written from what was loaded.
#pragma once
#include "persistence/ParametersStream.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

template <class I> SmartPtr<I> FuzzMake(tagREFString component)
{
    IID iid = I::Iid();
    auto made = SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(component, &iid))));
    if (!made)
        __builtin_trap();
    return made;
}

// The load modes the first byte picks from.
inline int FuzzParamsMode(uint8_t selector)
{
    const int kModes[] = {0, PARAMS_REPLACE, PARAMS_BYNAME, PARAMS_REPLACE | PARAMS_BYNAME, PARAMS_COMPACT};
    return kModes[selector % 5];
}

// A collection with items of every kind and flags that the forms treat apart.
inline SmartPtr<IParameters> FuzzParameters()
{
    auto parameters = FuzzMake<IParameters>(REFLiteral(L"ParametersCreatable"));
    auto add = parameters.As<IParametersCreatable>();
    const struct {
        const wchar_t* m_Name;
        int m_Flags;
    } kItems[] = {{L"Count", 3}, {L"Colour", 35}, {L"File", 0x16}, {L"Path", 0x6}, {L"Info", 0x40000}, {L"", 0x100}};
    for (const auto& item : kItems) {
        auto value = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
        value->put_Integer(7);
        add->Add(SmartPtr<IString>::Adopt(ISCreate(item.m_Name)), value, nullptr, item.m_Flags);
    }
    return parameters;
}

// Writes the collection in all four forms, as a loaded show is saved again.
inline void FuzzSaveEveryForm(IParameters* parameters)
{
    for (int mode : {0, PARAMS_COMPACT, PARAMS_WITHNAMES}) {
        auto xml = FuzzMake<IDataStream>(REFLiteral(L"XMLStream"));
        xml->SetBuffer(nullptr, 0, 0);
        parameters->Params_SaveXML(xml, mode);
        parameters->Params_SaveXMLUnk(xml, mode);
        auto csv = FuzzMake<IDataStream>(REFLiteral(L"CSVStream"));
        parameters->Params_SaveCSV(csv, mode);
        auto folder = FuzzMake<IDataStream>(REFLiteral(L"FolderStream"));
        parameters->Params_SaveFolderStream(folder, mode);
    }
}
