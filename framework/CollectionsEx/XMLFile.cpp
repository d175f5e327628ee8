#include "framework/CollectionsEx/XMLFile.h"

#include <memory>

#include "framework/CollectionsEx/XMLParameters.h"
#include "framework/CollectionsEx/XMLStream.h"

int32_t CXMLFile::FinalConstruct()
{
    m_Filter.Attach(ISCreate(L"XML file (*.xml)|*.xml||"));
    return S_OK;
}

void CXMLFile::FinalRelease()
{
    m_Content.Clear();
    m_Stream.Clear();
}

int32_t CXMLFile::Load()
{
    m_Content.Clear();
    m_Stream.Clear();
    CREFString file(m_Filename.get());
    if (file.IsEmpty())
        return E_FAIL;
    void* buffer = nullptr;
    unsigned long length = 0;
    int32_t result = FileArchiveLoad(file, &buffer, &length, FILELOAD_TEXT, 0);
    if (result < 0)
        return result;
    std::unique_ptr<wchar_t[]> text(static_cast<wchar_t*>(buffer));
    IID iid = IID_IXMLStream;
    SmartPtr<IXMLStream> stream;
    result = CObject<CXMLStream>::_CreateInstance(nullptr, &iid, stream.ReceiveVoid());
    if (result < 0)
        return result;
    stream->SetBuffer(text.get(), int(length * sizeof(wchar_t)), 0);
    // The stream was made here, so it is known to be ours: the parameters share its tree.
    std::shared_ptr<CXMLDocument> document = static_cast<CXMLStream*>(stream.get())->Document();
    if (!document)
        return E_FAIL;
    // The entries are the children of the top element, past any declaration.
    int32_t top = document->FirstChild(CXMLDocument::kRoot);
    while (top >= 0 && document->IsInstruction(top))
        top = document->Next(top);
    SmartPtr<IParameters> content = XMLParametersOf(*document, top < 0 ? CXMLDocument::kRoot : top);
    if (!content)
        return E_FAIL;
    m_Stream = stream;
    m_Content = content;
    m_HasFile = 1;
    m_Modified = 0;
    return S_OK;
}

int32_t CXMLFile::get_Stream(IXMLStream** stream)
{
    if (!stream)
        return E_POINTER;
    if (!m_Stream)
        return E_FAIL;
    *stream = m_Stream.Copy();
    return S_OK;
}
