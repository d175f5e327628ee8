#include "framework/CollectionsEx/GlobalComponentCollection.h"

#include <cwchar>

#include "framework/CollectionsEx/ComponentTable.h"
#include "runtime/Module.h"

int32_t CGlobalComponentCollection::CreateShared(void* outer, IID* iid, void** object)
{
    static SmartPtr<IUnknown> gShared;
    if (!gShared) {
        int32_t result = _CreateInstance(outer, const_cast<IID*>(&IID_IUnknown), gShared.ReceiveVoid());
        if (result < 0)
            return result;
        // This module's own loads of siblings share the collection too.
        ModuleInitialize(gShared.As<IComponentCollection>().get());
    }
    if (!object)
        return E_POINTER;
    *object = nullptr;
    return iid ? gShared->QueryInterface(*iid, object) : E_POINTER;
}

int32_t CGlobalComponentCollection::FinalConstruct()
{
    int count = 0;
    const ComponentLocation* table = ComponentTable(&count);
    m_Records.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        SmartPtr<IComponentString> record;
        int32_t result = CObject<CComponentString>::_CreateInstance(
            nullptr, const_cast<IID*>(&IID_IComponentString), record.ReceiveVoid());
        if (result < 0)
            return result;
        static_cast<CComponentString*>(record.get())->Describe(table[i].m_Component, table[i].m_Module);
        m_Records.push_back(record);
    }
    return S_OK;
}

void CGlobalComponentCollection::FinalRelease() { m_Records.clear(); }

int32_t CGlobalComponentCollection::get_Count(int* count)
{
    if (!count)
        return E_POINTER;
    *count = int(m_Records.size());
    return S_OK;
}

int32_t CGlobalComponentCollection::get_Item(int index, IUnknown** item)
{
    if (!item)
        return E_POINTER;
    if (index < 0 || size_t(index) >= m_Records.size())
        return E_INVALIDARG;
    *item = m_Records[size_t(index)].Copy();
    return S_OK;
}

int CGlobalComponentCollection::Find(tagREFString name)
{
    if (name.m_Length < 1 || !name.m_Buffer)
        return -1;
    for (size_t i = 0; i < m_Records.size(); ++i) {
        // Every record is one of ours (FinalConstruct made them all): its name is read
        // in place, as this runs for every object that any module creates.
        wchar_t* text = nullptr;
        int length = 0;
        static_cast<CComponentString*>(m_Records[i].get())->GetBuffer(&text, &length);
        if (length == name.m_Length && std::wmemcmp(text, name.m_Buffer, size_t(length)) == 0)
            return int(i);
    }
    return -1;
}

int32_t CGlobalComponentCollection::get_Index(IUnknown* key, int* index)
{
    if (!index)
        return E_POINTER;
    CREFString name(key);
    int found = Find(name);
    *index = found;
    return found < 0 ? E_FAIL : S_OK;
}

int32_t CGlobalComponentCollection::CreateObject(tagREFString name, IID* iid, void** out)
{
    if (!out)
        return E_POINTER;
    int index = Find(name);
    if (index < 0)
        return E_FAIL;
    IComponentString* record = m_Records[size_t(index)].get();
    // A null identifier asks for the record itself.
    if (!iid) {
        record->AddRef();
        *out = record;
        return S_OK;
    }
    return record->CreateObject(*iid, out);
}
