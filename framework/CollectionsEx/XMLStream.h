// "XMLStream" and "XMLStreamEx": the XML form of persistence. Written, it is an
// exact writer of elements and named values; given a text, a forgiving reader
// that walks the children of one element. Each element fetched by GetAttribute
// comes back as a stream of this class over that element, which also reads as
// the element's text through IString.
//
// Reading steps through the children with a position: NextAttribute names the
// child at the position without passing it; GetAttribute, Skip and ReadObject
// pass over what they take. A caller that only repeats NextAttribute sees the
// same name again.
#pragma once
#include <memory>

#include "framework/CollectionsEx/XMLDocument.h"
#include "framework/CollectionsEx/XMLWriter.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CXMLStream : public CObject<CXMLStream>,
                   public IObjectInfoImpl<CXMLStream>,
                   public IXMLStreamEx,
                   public IString {
public:
    static constexpr wchar_t kObjectName[] = L"XMLStream";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IDataStream>, Entry<IXMLStream>, Entry<IXMLStreamEx>,
                              Entry<IString>>;

    // IDataStream
    int32_t SetBuffer(void* data, int bytes, int mode) override;
    int32_t Skip(int bytes, int mode, int reserved) override;
    int32_t GetBuffer(void** data, unsigned long* size) override;
    int32_t Write(const void* data, int size, int reserved) override;

    // IXMLStream, writing
    int32_t OpenElement(IString* name, int a, int b) override;
    int32_t OpenObject(IUnknown* persist, int a, int b) override;
    int32_t PutAttribute(IString* name, int a, IString* value, int b) override;
    int32_t CloseElement() override;
    int32_t put_Mode(int mask, int flags) override;

    // IXMLStream, reading
    int32_t ResetAttributes(int a, int b, int c) override;
    int32_t NextAttribute(tagREFString* name) override;
    int32_t GetAttribute(tagREFString name, tagREFString* value, IUnknown** element, int mode) override;
    int32_t ReadObject(IUnknown** object) override;
    int32_t ReadObjectOfClass(tagREFString className, IUnknown** object) override;

    // IString: what was written, or the text of the element read.
    int32_t GetBuffer(wchar_t** text, int* length) override;

    // The tree of the text read, shared with whoever else reads it; null while writing.
    std::shared_ptr<CXMLDocument> Document() const { return m_Document; }

private:
    tagREFString OwnText();
    // A new stream over one element of this stream's tree.
    int32_t SubStream(int32_t node, IUnknown** out);
    // Makes a component by name and has it read itself from `from`.
    static int32_t CreateAndLoad(tagREFString component, IDataStream* from, IUnknown** object);

    CXMLWriter m_Writer;
    bool m_Writing = false;
    int32_t m_Mode = 0;

    std::shared_ptr<CXMLDocument> m_Document;
    // The element whose children are read, and the child at the position (-1: at the end).
    int32_t m_Element = CXMLDocument::kRoot;
    int32_t m_Position = -1;
};
