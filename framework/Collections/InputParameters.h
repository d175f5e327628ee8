// "InputParameters": the input ports of a step, a parameter collection whose
// descriptors are "InputParameter" objects. Saved in a folder of its own inside the
// step's stream, so that it never mixes with the step's parameters.
#pragma once
#include "persistence/ParametersImpl.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"

class CInputParameters : public CObject<CInputParameters>,
                         public IObjectInfoImpl<CInputParameters>,
                         public IParametersImpl<CInputParameters, IParameters>,
                         public IParametersCreatable,
                         public IInputParameters,
                         public IDataPersist {
public:
    static constexpr wchar_t kObjectName[] = L"InputParameters";
    using Parameters = IParametersImpl<CInputParameters, IParameters>;
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Parameters>, Entry<IParametersCreatable>,
                              Entry<IInputParameters>, Entry<IDataPersist>>;

    void Lock() override { m_Lock.Lock(); }
    void Unlock() override { m_Lock.Unlock(); }

    // One count and one item for both faces; an item is its input parameter, or
    // the value where there is none.
    int32_t get_Count(int* count) override { return Parameters::get_Count(count); }
    int32_t get_Item(int index, IUnknown** item) override;

    int32_t Add(IString* name, IUnknown* value, IUnknown* descriptor, int flags) override;

    int32_t Save(IDataStream* stream, int flags) override;
    int32_t Load(IDataStream* stream, int flags) override;

private:
    CResourceLock m_Lock;
};
