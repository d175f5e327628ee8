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

void CVXSong::DropPendingVerses()
{
    m_PendingText.reset();
    m_PendingLength = 0;
}
