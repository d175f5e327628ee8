// The stream's reading side: the walk over one element's children, and objects
// made from elements.
#include "framework/CollectionsEx/XMLStream.h"

#include "runtime/Module.h"

int32_t CXMLStream::ResetAttributes(int /*a*/, int /*b*/, int /*c*/)
{
    if (m_Document)
        m_Position = m_Document->FirstChild(m_Element);
    return S_OK;
}

int32_t CXMLStream::NextAttribute(tagREFString* name)
{
    if (!name)
        return E_POINTER;
    if (!m_Document || m_Position < 0)
        return E_FAIL;
    *name = m_Document->Name(m_Position);
    return S_OK;
}

// The count of bytes is that of the name NextAttribute gave: the entry is passed whole.
int32_t CXMLStream::Skip(int /*bytes*/, int /*mode*/, int /*reserved*/)
{
    if (!m_Document || m_Position < 0)
        return E_FAIL;
    m_Position = m_Document->Next(m_Position);
    return S_OK;
}

int32_t CXMLStream::GetAttribute(tagREFString name, tagREFString* value, IUnknown** element, int /*mode*/)
{
    if (!m_Document)
        return E_FAIL;
    if (name.m_Length < 1 || !name.m_Buffer)
        return E_INVALIDARG;
    int32_t found = m_Document->Find(m_Position, name);
    if (found >= 0) {
        m_Position = m_Document->Next(found);
    } else {
        // Not a child: looked for deeper, without moving, so that a page's body
        // is found under its html element.
        found = m_Document->FindInside(m_Position, name);
        if (found < 0)
            return E_FAIL;
    }
    if (element) {
        int32_t result = SubStream(found, element);
        if (result < 0)
            return result;
    }
    if (value)
        *value = m_Document->Text(found);
    return S_OK;
}

int32_t CXMLStream::ReadObject(IUnknown** object)
{
    if (!object)
        return E_POINTER;
    if (!m_Document)
        return E_FAIL;
    int32_t node = m_Position;
    while (node >= 0 && m_Document->IsInstruction(node))
        node = m_Document->Next(node);
    if (node < 0)
        return E_FAIL;
    // Taken even if no object comes of it, so that a walk of objects goes on.
    m_Position = m_Document->Next(node);
    SmartPtr<IUnknown> element;
    int32_t result = SubStream(node, element.Receive());
    if (result < 0)
        return result;
    return CreateAndLoad(m_Document->Name(node), element.As<IDataStream>(), object);
}

int32_t CXMLStream::ReadObjectOfClass(tagREFString className, IUnknown** object)
{
    if (!object)
        return E_POINTER;
    if (className.m_Length < 1 || !className.m_Buffer)
        return E_INVALIDARG;
    return CreateAndLoad(className, static_cast<IXMLStream*>(this), object);
}

int32_t CXMLStream::SubStream(int32_t node, IUnknown** out)
{
    SmartPtr<IXMLStream> made;
    int32_t result = CObject<CXMLStream>::_CreateInstance(nullptr, const_cast<IID*>(&IID_IXMLStream),
                                                          made.ReceiveVoid());
    if (result < 0)
        return result;
    auto* stream = static_cast<CXMLStream*>(made.get());
    stream->m_Document = m_Document;
    stream->m_Element = node;
    stream->m_Position = m_Document->FirstChild(node);
    stream->m_Mode = m_Mode;
    return made->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(out));
}

int32_t CXMLStream::CreateAndLoad(tagREFString component, IDataStream* from, IUnknown** object)
{
    IID iid = IID_IUnknown;
    auto made = SmartPtr<IUnknown>::Adopt(CreateObject(component, &iid));
    if (!made)
        return E_FAIL;
    auto persist = made.As<IDataPersist>();
    if (!persist)
        return E_NOINTERFACE;
    int32_t result = persist->Load(from, 0);
    if (result < 0)
        return result;
    *object = made.Detach();
    return S_OK;
}
