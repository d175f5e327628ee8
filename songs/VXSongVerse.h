// One slide of a song: its text, the song it comes from, its number there, and
// the switches that say whether a header and a footer go with it.
#pragma once
#include "runtime/EventSource.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"
#include "runtime/VXCore.h"

class CVXSongVerse : public CObject<CVXSongVerse>, public IObjectInfoImpl<CVXSongVerse>, public IVXSongVerse {
public:
    static constexpr wchar_t kObjectName[] = L"VXSongVerse";
    // The verse answers as a plain text object too: the first operations of the
    // three tables agree.
    using Interfaces = QiList<Entry<IObjectInfo>, Entry<IVXSongVerse>, Entry<IVXText, IVXSongVerse>,
                              Entry<IString, IVXSongVerse>>;

    void Lock() override { m_Lock.Lock(); }
    void Unlock() override { m_Lock.Unlock(); }

    int32_t GetBuffer(wchar_t** text, int* length) override;
    int32_t put_Text(tagREFString text) override;
    int32_t put_String(IString* text) override;
    int32_t get_HeaderStyle(IVXRenderStyle** style) override;
    int32_t put_HeaderStyle(IVXRenderStyle* style) override;
    int32_t get_FooterStyle(IVXRenderStyle** style) override;
    int32_t put_FooterStyle(IVXRenderStyle* style) override;
    int32_t get_Source(IVXBook** book) override;
    int32_t put_Source(IVXBook* book) override;
    int32_t Control(int code, int value) override;
    int32_t Inquire(int code, int* value) override;

private:
    // The field behind a property code and its flags word, or null.
    int32_t* Property(int code, int* flags);

    CResourceLock m_Lock;
    SmartPtr<IVXBook> m_Source;
    SmartPtr<IString> m_Text;
    // The index in the source; a text set by hand takes 100 off (the edit bias).
    int32_t m_VerseNb = 0;
    int32_t m_ShowTitle = 0;
    int32_t m_ShowVerseName = 0;
    int32_t m_ShowCopyright = 1;
    int32_t m_ShowAuthor = 0;
    int32_t m_ShowCCLI = 0;
    int32_t m_ShowFootTitle = 0;
    int32_t m_HeaderDisplay = DISPLAY_NEVER;
    int32_t m_FooterDisplay = DISPLAY_ALL;
};
