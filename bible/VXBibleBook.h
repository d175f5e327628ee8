// One book of a Bible translation: the whole text as one wide buffer, an index of
// chapters and verses over that buffer built by one scan, and the book's names.
#pragma once
#include <memory>
#include <vector>

#include "persistence/FileArchiveImpl.h"
#include "persistence/NamedCollection.h"
#include "persistence/PropInterrogate.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/VXCore.h"

class CVXBibleChapter;

class CVXBibleBook : public CObject<CVXBibleBook>,
                     public IObjectInfoImpl<CVXBibleBook>,
                     public IVXBook,
                     public IDataPersist,
                     public IVXSearch,
                     public INamedCollectionImpl<CVXBibleBook, ISuperCollection, IUnknown>,
                     public IFileArchiveImpl<CVXBibleBook, IFileArchive>,
                     public IString,
                     public IUIPropInterrogateImpl<CVXBibleBook, IUIPropInterrogateEx, 10> {
public:
    static constexpr wchar_t kObjectName[] = L"VXBibleBook";
    using Collection = INamedCollectionImpl<CVXBibleBook, ISuperCollection, IUnknown>;
    using Archive = IFileArchiveImpl<CVXBibleBook, IFileArchive>;
    using Properties = IUIPropInterrogateImpl<CVXBibleBook, IUIPropInterrogateEx, 10>;
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IDataPersist>, Entry<IVXBook>, Entry<IVXSearch>,
                              Chain<Collection>, Chain<Archive>, Entry<IString>, Chain<Properties>>;

    // How many holds the book's own collections keep on a reference: a chapter's name
    // alone; a verse as both name and item; and a verse among the book's last hits.
    static constexpr int kHeadingHolds = 1;
    static constexpr int kVerseHolds = 2;
    static constexpr int kHitHolds = kVerseHolds + 1;

    CVXBibleBook();
    int32_t FinalConstruct() override;
    void FinalRelease() override;

    // IVXBook
    int32_t Footer(IString** out, int chapter, int verse, int count, IUnknown* context) override;
    int32_t Header(IString** out, int chapter, int verse, int count, IUnknown* context) override;
    int32_t get_ChapterCount(int* count) override;
    int32_t get_VerseCount(int chapter, int* count) override;
    int32_t get_Verse(int chapter, int verse, int count, IString** text) override;

    // IVXSearch: the verses that hold the text; flags are not read.
    int32_t Find(IString* text, int flags, IUnknown** result) override;
    // 1 if pattern occurs in text, by the case-folding scan of the song search.
    static int32_t SearchString(IString* text, IString* pattern);

    // The book's own file: read once, written back as it was read.
    int32_t Save() override;
    int32_t Load() override;

    int32_t Clear() override { return CollectionClear(); }
    int32_t VerifyInterface(IUnknown* item, IUnknown** verified) override;
    // Only a flat book reads as a string: a chaptered one answers with length 0.
    int32_t GetBuffer(wchar_t** text, int* length) override;

    // The book inside a packed translation's folder stream.
    int32_t Save(IDataStream* stream, int flags) override;
    int32_t Load(IDataStream* stream, int flags) override;

    // Builds the index over m_Text (SetBufferPtrs).
    void SetBufferPtrs();

    SmartPtr<IString> m_UserName;
    SmartPtr<IString> m_NameInText;
    SmartPtr<IString> m_Translation;
    wchar_t* m_Text = nullptr;
    int32_t m_TextLength = 0;
    int32_t m_HasChapters = 1;
    SmartPtr<ISuperCollection> m_SearchResults;

private:
    // Text that an earlier read left behind: references handed out may still view it.
    void RetireText();
    CVXBibleChapter* AddChapter(CREFString line, int32_t length);
    void MakeFlat();
    // The verse list that get_Verse walks: the chapter at a position, or the book itself.
    SmartPtr<ISuperCollection> VerseList(int chapter);

    // Adds a verse to the hits, labelled with the book's name, `between` and the verse's
    // line; the hits hold it without holding the book.
    void AddHit(IVXTextReference* verse, const wchar_t* between);
    // The hits let go of their verses' holds, and are emptied.
    void ClearHits();

    std::vector<std::unique_ptr<wchar_t[]>> m_RetiredText;
};
