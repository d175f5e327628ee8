// One song: an ordered list of verses and a set of named text attributes, bound to
// a file. The one place where text becomes verses and verses become text again.
// A song is also a book of one chapter, and a string that yields its plain text.
#pragma once
#include <memory>

#include "persistence/FileArchiveImpl.h"
#include "persistence/PendingCollection.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"
#include "runtime/VXCore.h"

// The limits last chosen for Arrange, characters a line and lines a verse; kept
// for the life of the process.
extern int gArrangeMAXChars;
extern int gArrangeMAXLines;
// The picture every song shows, loaded at the first Render that finds it and kept
// for the life of the process.
extern SmartPtr<IRenderableObject> gIconVXSong;

class CVXSong : public CObject<CVXSong>,
                public IObjectInfoImpl<CVXSong>,
                public IVXSong,
                public IVXBook,
                public IVXSearch,
                public IParent,
                public ICreatableString,
                public IPendingCollectionImpl<CVXSong, IVXSongVerse>,
                public IFileArchiveImpl<CVXSong, IFileArchive>,
                public IUIPropertyPageSpecify,
                public IRenderableObject {
public:
    static constexpr wchar_t kObjectName[] = L"VXSong";
    using Collection = IPendingCollectionImpl<CVXSong, IVXSongVerse>;
    using Archive = IFileArchiveImpl<CVXSong, IFileArchive>;
    using Collection::Load;
    using Collection::Save;

    CVXSong();

    void Lock() override { m_Lock.Lock(); }
    void Unlock() override { m_Lock.Unlock(); }

    // IVXSong
    int32_t Arrange(int lines, int characters) override;
    int32_t SetVerses(tagREFString text, short mode) override;
    int32_t GetText(IString** out, short flags) override;

    // Attributes by name, without regard to ASCII case. E_FAIL: no such attribute.
    virtual int32_t get_AttributeByName(IString* name, IString** value);
    virtual int32_t put_AttributeByName(IString* name, IString* value);

    // ICreatableString: the song's plain text.
    int32_t GetBuffer(wchar_t** text, int* length) override;
    int32_t Clone(tagREFString text) override;
    int32_t Append(tagREFString text) override;

    // IVXBook
    int32_t get_ChapterCount(int* count) override;
    int32_t get_VerseCount(int chapter, int* count) override;
    int32_t get_Verse(int chapter, int verse, int count, IString** out) override;
    int32_t Header(IString** out, int chapter, int verse, int count, IUnknown* context) override;
    int32_t Footer(IString** out, int chapter, int verse, int count, IUnknown* context) override;

    // IVXSearch
    int32_t Find(IString* text, int flags, IUnknown** result) override;

    // The collection's admission test.
    int32_t VerifyInterface(IUnknown* item, IVXSongVerse** verified) override;

    // IUIPropertyPageSpecify, IRenderableObject
    int32_t GetPages(int mode, INamedCollection** pages, IUnknown** context) override;
    int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int flags) override;

    // IFileArchive: the song file and plain text files.
    int32_t Save() override;
    int32_t Load() override;
    int32_t Unload() override;

    // IParent: the owner that gets change events.
    int32_t get_Parent(IUnknown** parent) override;
    int32_t put_Parent(IUnknown* parent) override;

    // Empties the verses and tells the owner; the attributes stay.
    int32_t Clear() override;


    // The one place where verses are created.
    int32_t AddVerse(CREFString name, CREFString text, int index);
    // Reads the <attributes> block of a text; a name already known keeps its value.
    int32_t GetAttributeTags(tagREFString text, int reserved);

private:
    // Reads the file as Load does, but keeps the text of the verses uncut until
    // something asks for them: a search needs no verse objects.
    void LoadAttributes();
    // The common part of Load and LoadAttributes.
    void ReadFile(bool cutVerses);
    // Cuts the verses that LoadAttributes left, as Load would have; the song stays
    // as modified as it was. Every road to the verse list comes here first.
    void CutPendingVerses();
    void DropPendingVerses();
    friend Collection;
    // Looks through the verses that LoadAttributes left uncut, without making them:
    // *found tells whether the text of one contains query. False, with nothing
    // looked at, when no verses wait uncut.
    bool ScanPendingVerses(CREFString query, bool* found);
    // Cuts source into verses by its form: tagged (true) or plain (false).
    bool SplitVerses(CREFString source);
    void SplitPlain(CREFString text);
    // The verse elements of text, each as a verse named by its first attribute.
    void SplitTagged(CREFString text);
    int32_t ImportCCLI(tagREFString text);
    void SendChange();
    // Builds the text form that GetText gives, into text.
    void PrintText(ICreatableString* text, short flags);
    void PrintAttributes(ICreatableString* text);

    CResourceLock m_Lock;
    int32_t m_ChapterCount = 1;
    SmartPtr<IParameters> m_Attributes;
    SmartPtr<IUnknown> m_Parent;
    // The text whose verses are not cut yet, as the file gave it; null when none.
    std::unique_ptr<wchar_t[]> m_PendingText;
    int32_t m_PendingLength = 0;
    // While ScanPendingVerses runs: AddVerse only compares the text with this query.
    const CREFString* m_ScanQuery = nullptr;
    bool m_ScanFound = false;

public:
    // IUnknown answers first; the attribute set is reached through the song last of all.
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXSong>, Entry<IVXBook>, Entry<IParent>, Entry<IVXSearch>,
                              Chain<Collection>, Entry<IString, ICreatableString>, Entry<ICreatableString>,
                              Chain<Archive>, Entry<IRenderableObject>, Entry<IUIPropertyPageSpecify>,
                              Forward<IParameters, &CVXSong::m_Attributes>>;
};
