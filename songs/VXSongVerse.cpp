#include "songs/VXSongVerse.h"

#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"

int32_t CreateVXSongVerse(void* outer, IID* iid, void** object)
{
    return CObject<CVXSongVerse>::_CreateInstance(outer, iid, object);
}

namespace {

// The edit bias: a verse whose text was set by hand no longer comes from its song.
constexpr int32_t kEditBias = 100;

} // namespace

int32_t CVXSongVerse::GetBuffer(wchar_t** text, int* length)
{
    Lock();
    CREFString view(m_Text.get());
    int32_t size = view.m_Length < 0 ? 0 : view.m_Length;
    if (text)
        *text = view.m_Buffer;
    if (length)
        *length = size;
    Unlock();
    return size < 1 ? E_FAIL : S_OK;
}

int32_t CVXSongVerse::put_Text(tagREFString text)
{
    Lock();
    m_Text.Attach(ISCreate(text));
    m_VerseNb -= kEditBias;
    Unlock();
    return S_OK;
}

int32_t CVXSongVerse::put_String(IString* text)
{
    Lock();
    m_Text = SmartPtr<IString>(text);
    Unlock();
    return S_OK;
}

// A verse has one style, the one it inherits: the places are kept, nothing more.
int32_t CVXSongVerse::get_HeaderStyle(IVXRenderStyle**) { return E_FAIL; }
int32_t CVXSongVerse::put_HeaderStyle(IVXRenderStyle*) { return E_FAIL; }
int32_t CVXSongVerse::get_FooterStyle(IVXRenderStyle**) { return E_FAIL; }
int32_t CVXSongVerse::put_FooterStyle(IVXRenderStyle*) { return E_FAIL; }

int32_t CVXSongVerse::get_Source(IVXBook** book)
{
    if (!book)
        return E_POINTER;
    Lock();
    *book = m_Source.Copy();
    Unlock();
    return S_OK;
}

int32_t CVXSongVerse::put_Source(IVXBook* book)
{
    if (!book)
        return S_OK;
    Lock();
    m_Source = SmartPtr<IVXBook>(book);
    Unlock();
    return S_OK;
}

int32_t* CVXSongVerse::Property(int code, int* flags)
{
    struct Row {
        int m_Code;
        int m_Flags;
        int32_t CVXSongVerse::*m_Field;
    };
    static const Row kRows[] = {
        {VERSE_NUMBER, 0x80053, &CVXSongVerse::m_VerseNb},
        {VERSE_SHOWTITLE, 19, &CVXSongVerse::m_ShowTitle},
        {VERSE_SHOWVERSENAME, 19, &CVXSongVerse::m_ShowVerseName},
        {VERSE_HEADERDISPLAY, 67, &CVXSongVerse::m_HeaderDisplay},
        {VERSE_SHOWFOOTTITLE, 19, &CVXSongVerse::m_ShowFootTitle},
        {VERSE_SHOWCOPYRIGHT, 19, &CVXSongVerse::m_ShowCopyright},
        {VERSE_SHOWAUTHOR, 19, &CVXSongVerse::m_ShowAuthor},
        {VERSE_SHOWCCLI, 19, &CVXSongVerse::m_ShowCCLI},
        {VERSE_FOOTERDISPLAY, 67, &CVXSongVerse::m_FooterDisplay},
    };
    for (const Row& row : kRows) {
        if (row.m_Code == code) {
            *flags = row.m_Flags;
            return &(this->*row.m_Field);
        }
    }
    return nullptr;
}

int32_t CVXSongVerse::Control(int code, int value)
{
    int flags = 0;
    int32_t* field = Property(code, &flags);
    if (!field)
        return E_INVALIDARG;
    // Writing the number plainly clears the edit bias.
    *field = value;
    return S_OK;
}

int32_t CVXSongVerse::Inquire(int code, int* value)
{
    if (code == VERSE_PROPERTYCOUNT) {
        if (value)
            *value = 10;
        return S_OK;
    }
    int flags = 0;
    int32_t* field = Property(code, &flags);
    if (!field)
        return E_INVALIDARG;
    if (value) {
        *value = *field;
        // Readers see the index, not the bias.
        if (code == VERSE_NUMBER && *value < 0)
            *value += kEditBias;
    }
    return flags;
}
