// "InputParameter": one input port of a step. It names itself, points at the item
// it feeds (the target) and at where its value comes from (the source, usually a
// moniker that a Bind resolves).
#pragma once
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CInputParameter : public CObject<CInputParameter>,
                        public IObjectInfoImpl<CInputParameter>,
                        public IInputParameter,
                        public IDataPersist {
public:
    static constexpr wchar_t kObjectName[] = L"InputParameter";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IInputParameter>, Entry<IDataPersist>>;

    // The object that the source resolves to: a bound moniker's object, or a plain
    // source itself. Negative while there is nothing to give.
    int32_t get_Value(IUnknown** out) override;
    int32_t get_Name(IString** name) override;
    int32_t put_Name(tagREFString name) override;
    int32_t get_Target(IUnknown** target) override;
    int32_t put_Target(IUnknown* target) override;
    int32_t get_Source(IUnknown** source) override;
    int32_t put_Source(IUnknown* source) override;
    int32_t get_Flags(int* flags) override;
    int32_t put_Flags(int flags) override;

    // Name and flags, and a source that can persist itself; the target is the
    // owner's business and is bound again after loading.
    int32_t Save(IDataStream* stream, int flags) override;
    int32_t Load(IDataStream* stream, int flags) override;

private:
    SmartPtr<IString> m_Name;
    SmartPtr<IUnknown> m_Target;
    SmartPtr<IUnknown> m_Source;
    int32_t m_Flags = 0;
};
