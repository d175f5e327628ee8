// One chapter of a Bible book: the list of its verses, and a string whose text is the
// chapter's stretch of the book's buffer, heading and all. Only a book's scan makes one.
#pragma once
#include "persistence/NamedCollection.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CVXBibleChapter : public CObject<CVXBibleChapter>,
                        public IObjectInfoImpl<CVXBibleChapter>,
                        public INamedCollectionImpl<CVXBibleChapter, ISuperCollection, IVXTextReference>,
                        public IString {
public:
    static constexpr wchar_t kObjectName[] = L"VXBibleChapter";
    using Collection = INamedCollectionImpl<CVXBibleChapter, ISuperCollection, IVXTextReference>;
    using Interfaces = QiList<Entry<IObjectInfo>, Chain<Collection>, Entry<IString>>;

    // A new chapter with one reference for the caller.
    static CVXBibleChapter* Create(wchar_t* text, int32_t length);

    int32_t Clear() override { return CollectionClear(); }
    // Verses only: anything without IVXTextReference is refused.
    int32_t VerifyInterface(IUnknown* item, IVXTextReference** verified) override;
    int32_t GetBuffer(wchar_t** text, int* length) override;

    // Not owned: a stretch of the book's text.
    wchar_t* m_Text = nullptr;
    int32_t m_TextLength = 0;
};
