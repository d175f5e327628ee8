#include "songs/VXSong.h"

#include "persistence/TextLine.h"
#include "runtime/Module.h"
#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"

int32_t CreateVXSong(void* outer, IID* iid, void** object)
{
    return CObject<CVXSong>::_CreateInstance(outer, iid, object);
}

int32_t CVXSong::Arrange(int, int)
{
    // Arranging lines to limits belongs to the song's layout, which this build lacks.
    return E_NOTIMPL;
}

int32_t CVXSong::SetVerses(tagREFString text, short mode)
{
    m_Modified = 1;
    Lock();
    CollectionClear();
    SplitPlain(text);
    Unlock();
    return S_OK;
}

int32_t CVXSong::GetText(IString** out, short flags)
{
    if (!out)
        return E_POINTER;
    Lock();
    auto text = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    int count = 0;
    get_Count(&count);
    for (int i = 0; i < count; ++i) {
        SmartPtr<IUnknown> verse;
        if (get_Item(i, verse.Receive()) < 0)
            continue;
        CREFString body(verse.get());
        TextTrimLeft(body);
        TextTrimRight(body);
        text->Append(body);
        // Verses stand separated by one blank line, and the text ends in one.
        text->Append(REFLiteral(L"\r\n\r\n"));
    }
    Unlock();
    *out = text.Detach();
    return S_OK;
}

int32_t CVXSong::get_ChapterCount(int* count)
{
    if (!count)
        return E_POINTER;
    Lock();
    *count = m_ChapterCount;
    Unlock();
    return S_OK;
}

int32_t CVXSong::get_VerseCount(int, int* count)
{
    if (!count)
        return E_POINTER;
    return get_Count(count);
}

int32_t CVXSong::get_Verse(int, int verse, int, IString** out)
{
    if (!out)
        return E_POINTER;
    Lock();
    SmartPtr<IUnknown> item;
    int32_t result = get_Item(verse, item.Receive());
    if (result >= 0 && item)
        item->QueryInterface(IID_IString, reinterpret_cast<void**>(out));
    Unlock();
    return result < 0 ? E_FAIL : S_OK;
}

int32_t CVXSong::Header(IString**, int, int, int, IUnknown*)
{
    // Headers and footers are built by the song's layout, which this build lacks.
    return E_NOTIMPL;
}

int32_t CVXSong::Footer(IString**, int, int, int, IUnknown*) { return E_NOTIMPL; }

int32_t CVXSong::get_Parent(IUnknown** parent)
{
    if (!parent)
        return E_POINTER;
    *parent = m_Parent.Copy();
    return *parent ? S_OK : E_FAIL;
}

int32_t CVXSong::put_Parent(IUnknown* parent)
{
    m_Parent = SmartPtr<IUnknown>(parent);
    return S_OK;
}

int32_t CVXSong::VerifyInterface(IUnknown* item, IVXSongVerse** verified)
{
    if (!item)
        return E_FAIL;
    return item->QueryInterface(IID_IVXSongVerse, reinterpret_cast<void**>(verified)) < 0 ? E_FAIL : S_OK;
}

int32_t CVXSong::Clear()
{
    int32_t result = CollectionClear();
    SendChange();
    return result;
}

void CVXSong::SendChange()
{
    if (auto events = m_Parent.As<_IUIRefreshEvent>())
        events->UIItemChanged(Primary(), 0);
}
