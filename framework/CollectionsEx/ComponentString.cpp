#include "framework/CollectionsEx/ComponentString.h"

#include "framework/CollectionsEx/ComponentTable.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"

void CComponentString::Describe(const wchar_t* component, const wchar_t* module)
{
    m_Name = component ? component : L"";
    m_Module = module ? module : L"";
    m_Create = nullptr;
}

std::wstring* CComponentString::Field(int index)
{
    switch (index) {
    case COMPONENT_FIELD_NAME:
        return &m_Name;
    case COMPONENT_FIELD_MODULE:
        return &m_Module;
    default:
        return nullptr;
    }
}

int32_t CComponentString::put_Object(IUnknown* object)
{
    auto info = QueryAs<IObjectInfo>(object);
    if (!info)
        return E_INVALIDARG;
    tagREFString name{0, nullptr};
    if (info->GetName(0, &name) < 0 || name.m_Length < 0)
        return E_FAIL;
    m_Name.assign(name.m_Buffer, size_t(name.m_Length));
    const wchar_t* module = ComponentModule(name);
    m_Module = module ? module : L"";
    m_Create = nullptr;
    return S_OK;
}

int32_t CComponentString::get_Field(int index, IString** value)
{
    if (!value)
        return E_POINTER;
    std::wstring* field = Field(index);
    if (!field)
        return E_INVALIDARG;
    *value = ISCreate(CREFString(field->data(), int32_t(field->size())));
    return *value ? S_OK : E_FAIL;
}

int32_t CComponentString::put_Field(int index, tagREFString value)
{
    std::wstring* field = Field(index);
    if (!field)
        return E_INVALIDARG;
    m_Create = nullptr;
    if (value.m_Length > 0 && value.m_Buffer)
        field->assign(value.m_Buffer, size_t(value.m_Length));
    else
        field->clear();
    return S_OK;
}

int32_t CComponentString::CreateObject(const IID& iid, void** out)
{
    if (!out)
        return E_POINTER;
    if (m_Name.empty() || m_Module.empty())
        return E_FAIL;
    if (!m_Create)
        m_Create = MODULECreateFunction(CREFString(m_Module.data(), int32_t(m_Module.size())),
                                        CREFString(m_Name.data(), int32_t(m_Name.size())));
    if (!m_Create)
        return E_FAIL;
    return m_Create(nullptr, const_cast<IID*>(&iid), out);
}

int32_t CComponentString::GetBuffer(wchar_t** text, int* length)
{
    if (text)
        *text = m_Name.data();
    if (length)
        *length = int(m_Name.size());
    return S_OK;
}
