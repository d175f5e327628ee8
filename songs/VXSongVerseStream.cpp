// A verse in a show's stream: its text, its switches, its style and the name of its
// song's file, from which a loaded verse takes its text again unless it was edited.
#include <dirent.h>

#include <cstdio>
#include <cwctype>
#include <iterator>

#include "persistence/FileNameUTF8.h"
#include "persistence/PathMapping.h"
#include "songs/VXSongVerse.h"

namespace {

// The one song kept open for verses being loaded, shared by them all: loading the
// verses of one song in turn reads its file once. Its verses point back at it, so
// at the end of the process its collection is emptied before it is let go.
struct KeptSong : SmartPtr<IVXBook> {
    using SmartPtr<IVXBook>::operator=;
    ~KeptSong()
    {
        if (auto verses = As<ISuperCollection>())
            verses->Clear();
    }
};
KeptSong gBook;

SmartPtr<IString> Key(const wchar_t* name) { return SmartPtr<IString>::Adopt(ISCreate(name)); }

bool SameName(CREFString a, CREFString b)
{
    if (a.m_Length != b.m_Length)
        return false;
    for (int32_t i = 0; i < a.m_Length; ++i)
        if (std::towlower(wint_t(a.m_Buffer[i])) != std::towlower(wint_t(b.m_Buffer[i])))
            return false;
    return true;
}

// A file that fopen can open; a directory is no file.
bool FileExists(CREFString name)
{
    char path[kFileNameBytes];
    FileNameToUTF8(name, path);
    if (DIR* folder = opendir(path)) {
        closedir(folder);
        return false;
    }
    FILE* file = std::fopen(path, "rb");
    if (!file)
        return false;
    std::fclose(file);
    return true;
}

SmartPtr<IString> FileNameOf(IUnknown* object)
{
    SmartPtr<IString> name;
    if (auto archive = QueryAs<IFileArchive>(object))
        archive->get_Filename(name.Receive());
    return name;
}

} // namespace

int32_t CVXSongVerse::Save(IDataStream* stream, int flags)
{
    if (!stream)
        return S_OK;
    Lock();
    if (auto xml = QueryAs<IXMLStream>(stream)) {
        xml->PutAttribute(Key(L"Text"), 0, m_Text ? m_Text : Key(L""), 0);
        IVXRenderStyleImpl::Save(stream, flags);
    }
    if (auto folder = QueryAs<IFolderStream>(stream))
        SaveFolder(folder, flags);
    Unlock();
    return S_OK;
}

void CVXSongVerse::SaveFolder(IFolderStream* folder, int flags)
{
    if (SmartPtr<IString> file = FileNameOf(m_Source)) {
        SmartPtr<IString> install, relative;
        FILENAMEGetInstallPath(install.Receive());
        if (FILENAMECreateRelative(install, file, relative.Receive()) >= 0 && relative)
            file = relative;
        folder->WriteString(Key(L"File"), file);
    }
    folder->WriteString(Key(L"Text"), m_Text ? m_Text : Key(L""));
    int count = 0;
    const NumberKey* keys = NumberKeys(&count);
    // The number goes raw, bias and all.
    for (int i = 0; i < count; ++i)
        folder->WriteData(Key(keys[i].m_Key), &(this->*keys[i].m_Field), 4, 0);
    IVXRenderStyleImpl::Save(folder, flags);
}

int32_t CVXSongVerse::Load(IDataStream* stream, int flags)
{
    if (!stream)
        return S_OK;
    Lock();
    if (auto xml = QueryAs<IXMLStream>(stream)) {
        IVXRenderStyleImpl::Load(stream, flags);
        xml->ResetAttributes(0, 0, 0);
        SmartPtr<IUnknown> value;
        if (xml->GetAttribute(REFLiteral(L"Text"), nullptr, value.Receive(), 0) >= 0)
            m_Text.Attach(ISCreate(CREFString(QueryAs<IString>(value.get()).get())));
    }
    auto folder = QueryAs<IFolderStream>(stream);
    if (!folder) {
        Unlock();
        return S_OK;
    }
    SmartPtr<IString> file = ReadSongFile(folder);
    int count = 0;
    const NumberKey* keys = NumberKeys(&count);
    for (int i = 0; i < count; ++i)
        folder->ReadData(Key(keys[i].m_Key), &(this->*keys[i].m_Field), 4, 0);
    IVXRenderStyleImpl::Load(folder, flags);
    m_Source = nullptr;
    m_Text = nullptr;
    CREFString name(file.get());
    if (name.m_Length > 0 && FileExists(name))
        ReloadFromSong(file);
    // The saved text: the fallback for a lost song, and the truth for an edited verse.
    if (!m_Text) {
        auto text = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
        folder->ReadString(Key(L"Text"), text);
        m_Text = SmartPtr<IString>(text.get());
    }
    Unlock();
    return S_OK;
}

SmartPtr<IString> CVXSongVerse::ReadSongFile(IFolderStream* folder)
{
    auto file = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (!file)
        return nullptr;
    folder->ReadString(Key(L"File"), file);
    SmartPtr<IString> install, absolute;
    FILENAMEGetInstallPath(install.Receive());
    if (!CREFString(file.get()).IsEmpty() && FILENAMECreateAbsolute(install, file, absolute.Receive()) >= 0 &&
        absolute)
        return absolute;
    return SmartPtr<IString>(file.get());
}

void CVXSongVerse::ReloadFromSong(IString* file)
{
    if (gBook && !SameName(CREFString(FileNameOf(gBook).get()), CREFString(file)))
        gBook = nullptr;
    if (!gBook) {
        IID iid = IVXBook::Iid();
        gBook = SmartPtr<IVXBook>::Adopt(
            static_cast<IVXBook*>(static_cast<void*>(CreateObject(REFLiteral(L"VXSong"), &iid))));
        if (auto archive = gBook.As<IFileArchive>()) {
            archive->put_Filename(file);
            archive->Load();
        }
    }
    if (!gBook)
        return;
    m_Source = gBook;
    // A negative number, the edit bias, finds no verse: an edited verse keeps its own text.
    gBook->get_Verse(0, m_VerseNb, 1, m_Text.Receive());
}

// The footer title's key has always carried the header's title switch; shows saved
// so far depend on it, so a footer title survives no save.
const CVXSongVerse::NumberKey* CVXSongVerse::NumberKeys(int* count)
{
    static const NumberKey kKeys[] = {
        {L"VerseNb", &CVXSongVerse::m_VerseNb},
        {L"ShowTitle", &CVXSongVerse::m_ShowTitle},
        {L"ShowVerseName", &CVXSongVerse::m_ShowVerseName},
        {L"ShowAuthor", &CVXSongVerse::m_ShowAuthor},
        {L"ShowCCLI", &CVXSongVerse::m_ShowCCLI},
        {L"HeaderDisplay", &CVXSongVerse::m_HeaderDisplay},
        {L"FooterDisplay", &CVXSongVerse::m_FooterDisplay},
        {L"ShowFootTitle", &CVXSongVerse::m_ShowTitle},
    };
    *count = int(std::size(kKeys));
    return kKeys;
}
