// The stream's buffer and its writing side.
#include "framework/CollectionsEx/XMLStream.h"

int32_t CXMLStream::SetBuffer(void* data, int bytes, int /*mode*/)
{
    if (bytes < 0)
        return E_INVALIDARG;
    if (!data && bytes > 0)
        return E_POINTER;
    m_Writer.Clear();
    m_Document.reset();
    m_Element = CXMLDocument::kRoot;
    m_Position = -1;
    m_Writing = !data;
    if (data) {
        // A copy: callers free their buffer as soon as the stream has it.
        m_Document = std::make_shared<CXMLDocument>(static_cast<const wchar_t*>(data), int32_t(bytes / 4));
        m_Position = m_Document->FirstChild(m_Element);
    }
    return S_OK;
}

int32_t CXMLStream::Write(const void* data, int size, int /*reserved*/)
{
    if (size < 0)
        return E_INVALIDARG;
    if (!data && size > 0)
        return E_POINTER;
    m_Writing = true;
    m_Writer.AppendRaw(static_cast<const wchar_t*>(data), size_t(size / 4));
    return S_OK;
}

tagREFString CXMLStream::OwnText()
{
    if (m_Writing) {
        const std::wstring& text = m_Writer.Text();
        return tagREFString{int32_t(text.size()), const_cast<wchar_t*>(text.data())};
    }
    if (m_Document)
        return m_Document->Text(m_Element);
    return REFLiteral(L"");
}

int32_t CXMLStream::GetBuffer(void** data, unsigned long* size)
{
    if (!data || !size)
        return E_POINTER;
    tagREFString text = OwnText();
    *data = text.m_Buffer;
    *size = (unsigned long)(text.m_Length) * sizeof(wchar_t);
    return S_OK;
}

int32_t CXMLStream::GetBuffer(wchar_t** text, int* length)
{
    tagREFString own = OwnText();
    if (text)
        *text = own.m_Buffer;
    if (length)
        *length = own.m_Length;
    return S_OK;
}

int32_t CXMLStream::OpenElement(IString* name, int /*a*/, int /*b*/)
{
    if (!name)
        return E_POINTER;
    m_Writing = true;
    return m_Writer.Open(CREFString(name)) ? S_OK : E_INVALIDARG;
}

int32_t CXMLStream::OpenObject(IUnknown* persist, int /*a*/, int /*b*/)
{
    if (!persist)
        return E_POINTER;
    auto info = QueryAs<IObjectInfo>(persist);
    if (!info)
        return E_NOINTERFACE;
    tagREFString name{0, nullptr};
    if (info->GetName(0, &name) < 0)
        return E_FAIL;
    m_Writing = true;
    return m_Writer.Open(name) ? S_OK : E_FAIL;
}

int32_t CXMLStream::PutAttribute(IString* name, int /*a*/, IString* value, int /*b*/)
{
    if (!name)
        return E_POINTER;
    m_Writing = true;
    return m_Writer.Put(CREFString(name), CREFString(value)) ? S_OK : E_INVALIDARG;
}

int32_t CXMLStream::CloseElement() { return m_Writer.Close() ? S_OK : E_FAIL; }

// The flags change nothing in what is written; they are kept as given.
int32_t CXMLStream::put_Mode(int mask, int flags)
{
    m_Mode = (m_Mode & ~mask) | (flags & mask);
    return S_OK;
}
