// The song file: UTF-16LE behind a byte order mark, holding the tagged text form.
// A plain text file is read by the same Load and becomes a song file on Save.
#include "persistence/FileBuffer.h"
#include "runtime/ValueConversion.h"
#include "songs/VXSong.h"

namespace {

SmartPtr<IString> MakeString(const wchar_t* text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

} // namespace

int32_t CVXSong::Load()
{
    // Lazy: the first caller that needs the content reads the file, once.
    if (m_HasFile == 0)
        ReadFile(true);
    return S_OK;
}

void CVXSong::LoadAttributes()
{
    if (m_HasFile == 0)
        ReadFile(false);
}

void CVXSong::ReadFile(bool cutVerses)
{
    void* buffer = nullptr;
    unsigned long length = 0;
    if (FileArchiveLoad(CREFString(m_Filename.get()), &buffer, &length, FILELOAD_TEXTCHECK, 0) >= 0) {
        std::unique_ptr<wchar_t[]> text(static_cast<wchar_t*>(buffer));
        CREFString view(text.get(), int32_t(length));
        GetAttributeTags(view, 0);
        if (cutVerses) {
            SetVerses(view, SONGVERSES_PARSE);
        } else {
            m_PendingText = std::move(text);
            m_PendingLength = int32_t(length);
        }
        m_Modified = 0;
    }
    // Every song has a title and an author, empty when the file lacks them.
    for (const wchar_t* name : {L"Title", L"Author"}) {
        auto key = MakeString(name);
        SmartPtr<IString> value;
        if (get_AttributeByName(key, value.Receive()) < 0)
            put_AttributeByName(key, MakeString(L""));
    }
    m_Modified = 0;
    m_HasFile = 1;
}

int32_t CVXSong::Save()
{
    if (!m_Filename)
        return E_INVALIDARG;
    // A song without a title takes the file's name; a title of blanks is kept.
    auto title = MakeString(L"Title");
    SmartPtr<IString> value;
    if (get_AttributeByName(title, value.Receive()) < 0 || CREFString(value.get()).m_Length < 1) {
        SmartPtr<IString> name;
        if (get_Name(name.Receive()) < 0)
            name = MakeString(L"");
        put_AttributeByName(title, name);
    }
    SmartPtr<IString> text;
    GetText(text.Receive(), SONGTEXT_VERSES | SONGTEXT_VERSETAGS | SONGTEXT_HEADER);
    CREFString body(text.get());
    // A file that can't be written is not reported; the song counts as saved.
    FileArchiveSave(CREFString(m_Filename.get()), reinterpret_cast<unsigned char*>(body.m_Buffer),
                    static_cast<unsigned long>(body.m_Length) * sizeof(wchar_t), 1, 0);
    m_Modified = 0;
    return S_OK;
}
