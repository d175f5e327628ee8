// The framework's parameter collection: named values in the order of adding, with
// descriptors and flags. Songs keep their attributes in one, INI files a section each.
#pragma once
#include "persistence/ParametersImpl.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"

class CParametersCreatable : public CObject<CParametersCreatable>,
                             public IObjectInfoImpl<CParametersCreatable>,
                             public IParametersImpl<CParametersCreatable, IParameters>,
                             public IParametersCreatable {
public:
    static constexpr wchar_t kObjectName[] = L"ParametersCreatable";
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<IParametersImpl<CParametersCreatable, IParameters>>,
                              Entry<IParametersCreatable>>;

    // Recursive: a caller inside CollectionLock may call any operation.
    void Lock() override { m_Lock.Lock(); }
    void Unlock() override { m_Lock.Unlock(); }

    int32_t Add(IString* name, IUnknown* value, IUnknown* descriptor, int flags) override;

private:
    CResourceLock m_Lock;
};
