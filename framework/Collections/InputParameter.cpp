#include "framework/Collections/InputParameter.h"

#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IString> Literal(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

} // namespace

int32_t CInputParameter::get_Value(IUnknown** out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    if (auto moniker = QueryAs<ICollectionMoniker>(m_Source.get()))
        return moniker->get_Object(IID_IUnknown, reinterpret_cast<void**>(out)) < 0 || !*out ? E_FAIL : S_OK;
    *out = m_Source.Copy();
    return *out ? S_OK : E_FAIL;
}

int32_t CInputParameter::get_Name(IString** name)
{
    if (!name)
        return E_POINTER;
    *name = m_Name.Copy();
    return *name ? S_OK : E_FAIL;
}

int32_t CInputParameter::put_Name(tagREFString name)
{
    m_Name = SmartPtr<IString>::Adopt(ISCreate(name));
    return S_OK;
}

int32_t CInputParameter::get_Target(IUnknown** target)
{
    if (!target)
        return E_POINTER;
    *target = m_Target.Copy();
    return *target ? S_OK : E_FAIL;
}

int32_t CInputParameter::put_Target(IUnknown* target)
{
    m_Target = SmartPtr<IUnknown>(target);
    return S_OK;
}

int32_t CInputParameter::get_Source(IUnknown** source)
{
    if (!source)
        return E_POINTER;
    *source = m_Source.Copy();
    return *source ? S_OK : E_FAIL;
}

int32_t CInputParameter::put_Source(IUnknown* source)
{
    m_Source = SmartPtr<IUnknown>(source);
    return S_OK;
}

int32_t CInputParameter::get_Flags(int* flags)
{
    if (!flags)
        return E_POINTER;
    *flags = m_Flags;
    return S_OK;
}

int32_t CInputParameter::put_Flags(int flags)
{
    m_Flags = flags;
    return S_OK;
}

int32_t CInputParameter::Save(IDataStream* stream, int flags)
{
    auto name = m_Name ? m_Name : Literal(L"");
    if (auto xml = QueryAs<IXMLStream>(stream)) {
        xml->PutAttribute(Literal(L"Name"), 0, name, 0);
        xml->PutAttribute(Literal(L"Flags"), 0, SmartPtr<IString>::Adopt(ISCreate(int(m_Flags))), 0);
    } else if (auto folder = QueryAs<IFolderStream>(stream)) {
        folder->WriteString(Literal(L"Name"), name);
        folder->WriteData(Literal(L"Flags"), &m_Flags, int(sizeof(m_Flags)), 0);
        if (QueryAs<IDataPersist>(m_Source.get()))
            folder->WriteObject(Literal(L"Source"), m_Source, flags);
    }
    return S_OK;
}

int32_t CInputParameter::Load(IDataStream* stream, int flags)
{
    if (auto xml = QueryAs<IXMLStream>(stream)) {
        tagREFString text{0, nullptr};
        SmartPtr<IUnknown> element;
        xml->ResetAttributes(0, 0, 0);
        if (xml->GetAttribute(REFLiteral(L"Name"), &text, element.Receive(), 0) >= 0)
            put_Name(text);
        xml->ResetAttributes(0, 0, 0);
        if (xml->GetAttribute(REFLiteral(L"Flags"), &text, nullptr, 0) >= 0)
            m_Flags = _IS2Integer(CREFString(text), 10);
    } else if (auto folder = QueryAs<IFolderStream>(stream)) {
        auto name = SmartPtr<IUnknown>::Adopt(CREFString::CreateString());
        if (name && folder->ReadString(Literal(L"Name"), name) >= 0)
            m_Name = name.As<IString>();
        folder->ReadData(Literal(L"Flags"), &m_Flags, int(sizeof(m_Flags)), 0);
        SmartPtr<IUnknown> source;
        if (folder->ReadObject(Literal(L"Source"), source.Receive(), flags) >= 0 && source)
            m_Source = source;
    }
    return S_OK;
}
