// "VXBook": one book of an XML Bible, held as plain lists of verse texts. The Bible
// creates one for each Book entry of its XML file and hands it the entry's content
// through IVXBookEx::Load; it then reads it through IVXBook like any other book.
#pragma once
#include <string>
#include <vector>

#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CVXBook : public CObject<CVXBook>, public IObjectInfoImpl<CVXBook>, public IVXBook, public IVXBookEx {
public:
    static constexpr wchar_t kObjectName[] = L"VXBook";
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXBook>, Entry<IVXBookEx>>;

    // IVXBookEx. The content's entries are chapters, whose entries are verses; a
    // verse outside any chapter belongs to the chapter before it, or to a first one.
    // The attribute "name" names the book.
    int32_t Load(IParameters* content) override;

    // IVXBook
    int32_t get_ChapterCount(int* count) override;
    int32_t get_VerseCount(int chapter, int* count) override;
    // The verses as lines "number:<tab>text", as a book file has them.
    int32_t get_Verse(int chapter, int verse, int count, IString** out) override;
    // The name, and the chapter and verses as a reader writes them.
    int32_t Header(IString** out, int chapter, int verse, int count, IUnknown* context) override;
    // A book has no footer.
    int32_t Footer(IString** out, int chapter, int verse, int count, IUnknown* context) override { return E_NOTIMPL; }

private:
    std::wstring m_Name;
    std::vector<std::vector<std::wstring>> m_Chapters;
};
