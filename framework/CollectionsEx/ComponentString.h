// A component record: the component's name and the module file that provides it.
// Creating through it opens the module and asks it for the component.
#pragma once
#include <string>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CComponentString : public CObject<CComponentString>,
                         public IObjectInfoImpl<CComponentString>,
                         public IComponentString,
                         public IString {
public:
    static constexpr wchar_t kObjectName[] = L"ComponentString";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IComponentString>, Entry<IString>>;

    // Fills a record in place, as the collection makes them.
    void Describe(const wchar_t* component, const wchar_t* module);

    int32_t put_Object(IUnknown* object) override;
    int32_t get_Field(int index, IString** value) override;
    int32_t CreateObject(const IID& iid, void** out) override;
    int32_t put_Field(int index, tagREFString value) override;
    // The record reads as its component's name.
    int32_t GetBuffer(wchar_t** text, int* length) override;

private:
    std::wstring* Field(int index);

    std::wstring m_Name;
    std::wstring m_Module;
    // The creation function, found once: modules stay loaded for the life of the
    // process, so a record need not open its module again for every object.
    // Forgotten whenever the name or the module changes.
    VXCreateFunction m_Create = nullptr;
};
