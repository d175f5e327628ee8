// One slide of a song: its text, the song it comes from, its number there, the
// switches that say whether a header and a footer go with it, and a render style
// of its own. A verse can stand alone in a show, saved with a back reference to
// its song's file, from which it fetches its text again when loaded.
#pragma once
#include "persistence/PropInterrogate.h"
#include "presentation/RenderStyleImpl.h"
#include "runtime/Object.h"
#include "runtime/ObjectInfo.h"
#include "runtime/ResourceLock.h"
#include "runtime/VXCore.h"

class CVXSongVerse : public CObject<CVXSongVerse>,
                     public IObjectInfoImpl<CVXSongVerse>,
                     public IDataPersist,
                     public IParent,
                     public IVXSongVerse,
                     public IVXRenderStyleImpl,
                     public IRenderableObject,
                     public IReplicableObject,
                     public IUIPropertyPageSpecify,
                     public IUIPropInterrogateImpl<CVXSongVerse, IUIPropInterrogateEx, 10> {
public:
    static constexpr wchar_t kObjectName[] = L"VXSongVerse";
    using Properties = IUIPropInterrogateImpl<CVXSongVerse, IUIPropInterrogateEx, 10>;
    // The verse answers as a plain text object too: the first operations of the
    // three tables agree.
    using Interfaces =
        QiList<Entry<IObjectInfo>, Entry<IDataPersist>, Entry<IParent>, Entry<IVXSongVerse>,
               Entry<IVXText, IVXSongVerse>, Entry<IString, IVXSongVerse>, Entry<IVXRenderStyle, IVXRenderStyleImpl>,
               Entry<IRenderableObject>, Entry<IReplicableObject>, Entry<IUIPropertyPageSpecify>, Chain<Properties>>;

    int32_t FinalConstruct() override;
    void Lock() override { m_Lock.Lock(); }
    void Unlock() override { m_Lock.Unlock(); }

    // A verse has one style, the one it inherits: these keep their places only.
    int32_t get_FooterStyle(IVXRenderStyle** style) override;
    int32_t put_FooterStyle(IVXRenderStyle* style) override;
    int32_t get_HeaderStyle(IVXRenderStyle** style) override;
    int32_t put_HeaderStyle(IVXRenderStyle* style) override;
    int32_t get_Source(IVXBook** book) override;
    int32_t put_Source(IVXBook* book) override;
    // The property table's, with the edit bias taken off VERSE_NUMBER for readers.
    int32_t Inquire(int code, int* value) override;
    int32_t Control(int code, int value) override;
    int32_t ControlEx(int code, IUnknown* value) override;
    int32_t put_Text(tagREFString text) override;
    int32_t put_String(IString* text) override;
    int32_t CopyAttributes(IVXRenderStyle* source) override;
    int32_t GetBuffer(wchar_t** text, int* length) override;
    int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int flags) override;
    int32_t get_Parent(IUnknown** parent) override;
    int32_t put_Parent(IUnknown* parent) override;
    int32_t Replicate(IUnknown** copy) override;
    // One pair for the verse as a persistent object and as a style.
    int32_t Save(IDataStream* stream, int flags) override;
    int32_t Load(IDataStream* stream, int flags) override;
    int32_t GetPages(int mode, INamedCollection** pages, IUnknown** context) override;

private:
    // The numbers of the folder form, by key, in the order in which they are written.
    struct NumberKey {
        const wchar_t* m_Key;
        int32_t CVXSongVerse::*m_Field;
    };
    static const NumberKey* NumberKeys(int* count);

    void SaveFolder(IFolderStream* folder, int flags);
    // The song's file named in the stream, as an absolute name.
    SmartPtr<IString> ReadSongFile(IFolderStream* folder);
    // Fetches the text from the song of that file; leaves m_Text null when it can't.
    void ReloadFromSong(IString* file);

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
    SmartPtr<IString> m_Prop20;
};
