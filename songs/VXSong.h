// One song: an ordered list of verses, the one place where text becomes verses
// and verses become text again. A song is also a book of one chapter.
#pragma once
#include "persistence/NamedCollection.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"
#include "runtime/VXCore.h"

class CVXSong : public CObject<CVXSong>,
                public IObjectInfoImpl<CVXSong>,
                public IVXSong,
                public IVXBook,
                public IParent,
                public INamedCollectionImpl<CVXSong, ISuperCollection, IVXSongVerse> {
public:
    static constexpr wchar_t kObjectName[] = L"VXSong";
    using Collection = INamedCollectionImpl<CVXSong, ISuperCollection, IVXSongVerse>;
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXSong>, Entry<IVXBook>, Entry<IParent>, Chain<Collection>>;

    void Lock() override { m_Lock.Lock(); }
    void Unlock() override { m_Lock.Unlock(); }

    // IVXSong
    int32_t Arrange(int lines, int characters) override;
    int32_t SetVerses(tagREFString text, short mode) override;
    int32_t GetText(IString** out, short flags) override;

    // IVXBook
    int32_t get_ChapterCount(int* count) override;
    int32_t get_VerseCount(int chapter, int* count) override;
    int32_t get_Verse(int chapter, int verse, int count, IString** out) override;
    int32_t Header(IString** out, int chapter, int verse, int count, IUnknown* context) override;
    int32_t Footer(IString** out, int chapter, int verse, int count, IUnknown* context) override;

    // IParent: the owner that gets change events.
    int32_t get_Parent(IUnknown** parent) override;
    int32_t put_Parent(IUnknown* parent) override;

    // The collection's admission test and its emptying.
    int32_t VerifyInterface(IUnknown* item, IVXSongVerse** verified) override;
    int32_t Clear() override;

    // The one place where verses are created.
    int32_t AddVerse(CREFString name, CREFString text, int index);

private:
    void SplitPlain(CREFString text);
    void SendChange();

    CResourceLock m_Lock;
    int32_t m_ChapterCount = 1;
    SmartPtr<IUnknown> m_Parent;
    // Non-zero when the song differs from its file.
    int32_t m_Modified = 0;
};
