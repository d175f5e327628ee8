// A song read for one attribute search cuts its verses only when they are asked
// for: every road to the verse list passes here first.
#include "songs/VXSong.h"

void CVXSong::CutPendingVerses()
{
    Lock();
    if (m_PendingText) {
        // Taken out first: SetVerses comes back through these roads.
        std::unique_ptr<wchar_t[]> text = std::move(m_PendingText);
        int32_t modified = m_Modified;
        SetVerses(CREFString(text.get(), m_PendingLength), SONGVERSES_PARSE);
        m_Modified = modified;
        m_PendingLength = 0;
    }
    Unlock();
}

bool CVXSong::ScanPendingVerses(CREFString query, bool* found)
{
    Lock();
    bool pending = bool(m_PendingText);
    if (pending) {
        m_ScanQuery = &query;
        m_ScanFound = false;
        SplitVerses(CREFString(m_PendingText.get(), m_PendingLength));
        *found = m_ScanFound;
        m_ScanQuery = nullptr;
    }
    Unlock();
    return pending;
}

int32_t CVXSong::get_Count(int* count)
{
    CutPendingVerses();
    return Collection::get_Count(count);
}

int32_t CVXSong::get_Item(int index, IUnknown** item)
{
    CutPendingVerses();
    return Collection::get_Item(index, item);
}

int32_t CVXSong::get_Index(IUnknown* key, int* index)
{
    CutPendingVerses();
    return Collection::get_Index(key, index);
}

int32_t CVXSong::get_ItemName(int index, IString** name)
{
    CutPendingVerses();
    return Collection::get_ItemName(index, name);
}

int32_t CVXSong::Rename(int index, IString* name)
{
    CutPendingVerses();
    return Collection::Rename(index, name);
}

int32_t CVXSong::CollectionLock()
{
    CutPendingVerses();
    return Collection::CollectionLock();
}

int32_t CVXSong::get_ItemAttached(int index, IUnknown** attached)
{
    CutPendingVerses();
    return Collection::get_ItemAttached(index, attached);
}

int32_t CVXSong::put_ItemAttached(int index, IUnknown* attached)
{
    CutPendingVerses();
    return Collection::put_ItemAttached(index, attached);
}

int32_t CVXSong::get_ItemFlags(int index, int* flags)
{
    CutPendingVerses();
    return Collection::get_ItemFlags(index, flags);
}

int32_t CVXSong::put_ItemFlags(int index, int flags)
{
    CutPendingVerses();
    return Collection::put_ItemFlags(index, flags);
}

int32_t CVXSong::put_Item(int index, IUnknown* item)
{
    CutPendingVerses();
    return Collection::put_Item(index, item);
}

int32_t CVXSong::Add(IString* name, IUnknown* item, IUnknown* attached, int flags)
{
    CutPendingVerses();
    return Collection::Add(name, item, attached, flags);
}

int32_t CVXSong::Insert(int index, IString* name, IUnknown* item, IUnknown* attached, int flags)
{
    CutPendingVerses();
    return Collection::Insert(index, name, item, attached, flags);
}

int32_t CVXSong::Remove(int index)
{
    CutPendingVerses();
    return Collection::Remove(index);
}

int32_t CVXSong::Query(const IID& iid, int index, short attached, int* found)
{
    CutPendingVerses();
    return Collection::Query(iid, index, attached, found);
}

int32_t CVXSong::Sort(int flags, void* compare)
{
    CutPendingVerses();
    return Collection::Sort(flags, compare);
}

int32_t CVXSong::CollectionClear()
{
    // Verses that would go at once need not be made: the list ends empty either way.
    Lock();
    m_PendingText.reset();
    m_PendingLength = 0;
    int32_t result = Collection::CollectionClear();
    Unlock();
    return result;
}

int32_t CVXSong::Save(IDataStream* stream, int flags)
{
    CutPendingVerses();
    return Collection::Save(stream, flags);
}

int32_t CVXSong::Load(IDataStream* stream, int flags)
{
    CutPendingVerses();
    return Collection::Load(stream, flags);
}
