#include "bible/VXBible.h"

#include "persistence/PathMapping.h"
#include "runtime/Factories.h"
#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"

namespace {

SmartPtr<IString> Key(const wchar_t* name) { return SmartPtr<IString>::Adopt(ISCreate(name)); }

// Reads a string item into a new string; empty when the stream has no such item.
SmartPtr<IString> ReadText(IFolderStream* folder, const wchar_t* name)
{
    auto value = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (!value || folder->ReadString(Key(name), value) < 0)
        return nullptr;
    return SmartPtr<IString>(value.get());
}

} // namespace

int32_t CreateVXBible(void* outer, IID* iid, void** object)
{
    return CObject<CVXBible>::_CreateInstance(outer, iid, object);
}

CVXBible::CVXBible()
{
    m_Filter.Attach(ISCreate(L"Bible book (*.tBL)|*.tBL|Bible(*.xml)|*.xml|theWord(*.ont)|*.ont||"));
    // The text of a Bible lies in files of its own, where a book's lies in the book's file.
    m_Property3 = 1;
}

int32_t CVXBible::FinalConstruct()
{
    m_Translation.Attach(ISCreate(L"Bible"));
    m_Abbreviation.Attach(ISCreate(L"B"));
    m_Language.Attach(ISCreate(L"English"));
    m_SearchResults.Attach(BASEObject::CreateNamedCollection());
    Prop(BIBLE_PROP_TRANSLATION, &m_Translation, PROPTYPE_STRING);
    Prop(BIBLE_PROP_ABBREVIATION, &m_Abbreviation, PROPTYPE_STRING);
    Prop(BIBLE_PROP_LANGUAGE, &m_Language, PROPTYPE_STRING);
    return S_OK;
}

void CVXBible::FinalRelease()
{
    // A hit holds its book; the tree holds this Bible until it is cut.
    if (m_SearchResults)
        m_SearchResults->Clear();
    put_UserInterface(nullptr);
    put_Parent(nullptr);
    CollectionClear();
}

int32_t CVXBible::Clear()
{
    cLock();
    CollectionClear();
    cUnlock();
    return S_OK;
}

int32_t CVXBible::VerifyInterface(IUnknown* item, IVXBook** verified)
{
    if (!item || !verified)
        return E_FAIL;
    return item->QueryInterface(IID_IVXBook, reinterpret_cast<void**>(verified)) < 0 ? E_FAIL : S_OK;
}

int32_t CVXBible::get_Parent(IUnknown** parent)
{
    if (!parent)
        return E_POINTER;
    *parent = m_Parent.Copy();
    return S_OK;
}

int32_t CVXBible::put_Parent(IUnknown* parent)
{
    m_Parent = SmartPtr<IUnknown>(parent);
    return S_OK;
}

CREFString BibleExtension(IString* filename)
{
    CREFString name(filename);
    int32_t dot = -1;
    for (int32_t i = 0; i < name.m_Length; ++i)
        if (name.m_Buffer[i] == L'.')
            dot = i;
    if (dot <= 0)
        return name;
    return CREFString(name.m_Buffer + dot + 1, name.m_Length - dot - 1);
}

int32_t CVXBible::Save()
{
    auto window = Make<IMessageWindow>(REFLiteral(L"MessageWindow"));
    if (window)
        window->Show(m_Translation);
    if (BibleExtension(m_Filename).IsEmpty())
        return E_FAIL;
    auto stream = Make<IFolderStream>(REFLiteral(L"FolderStream"));
    auto info = Make<IFileInfo>(REFLiteral(L"FileInfo"));
    if (!stream)
        return E_FAIL;
    stream->WriteObject(Key(L"Info"), info, 0);
    stream->WriteObject(Key(kObjectName), static_cast<IDataPersist*>(this), 0x80002);
    if (auto archive = stream.As<IFileArchive>()) {
        // The packed file sits beside the folder, whatever the name ends in.
        auto packed = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
        packed->Clone(CREFString(m_Filename.get()));
        packed->Append(REFLiteral(L".tBL"));
        archive->put_Filename(packed);
        archive->Control(ARCHIVE_COMPRESS, 1);
        archive->Save();
    }
    return S_OK;
}

int32_t CVXBible::Save(IDataStream* stream, int flags)
{
    auto folder = QueryAs<IFolderStream>(stream);
    if (!folder)
        return S_OK;
    if (flags & 0x80000) {
        folder->WriteString(Key(L"Translation"), m_Translation);
        folder->WriteString(Key(L"Abbreviation"), m_Abbreviation);
        folder->WriteString(Key(L"Language"), m_Language);
        SmartPtr<IDataStream> text;
        folder->CreateFolder(Key(L"BibleText"), 0, text.Receive());
        Collection::Save(text, 0);
        return S_OK;
    }
    // Inside another document only where the Bible lies is kept, below the installation.
    SmartPtr<IString> install, relative;
    FILENAMEGetInstallPath(install.Receive());
    FILENAMECreateRelative(install, m_Filename, relative.Receive());
    folder->WriteString(Key(L"Filename"), relative);
    folder->WriteObject(Key(L"UI"), m_UserInterface, 0);
    return S_OK;
}

int32_t CVXBible::Load(IDataStream* stream, int /*flags*/)
{
    auto folder = QueryAs<IFolderStream>(stream);
    if (!folder)
        return S_OK;
    if (SmartPtr<IString> relative = ReadText(folder, L"Filename")) {
        SmartPtr<IString> install, absolute;
        FILENAMEGetInstallPath(install.Receive());
        if (FILENAMECreateAbsolute(install, relative, absolute.Receive()) >= 0 && absolute)
            m_Filename = absolute;
    }
    SmartPtr<IUnknown> tree;
    if (folder->ReadObject(Key(L"UI"), tree.Receive(), 0) >= 0 && tree) {
        if (auto container = tree.As<IUINodeContainer>())
            put_UserInterface(container);
    }
    if (SmartPtr<IString> translation = ReadText(folder, L"Translation"))
        m_Translation = translation;
    if (SmartPtr<IString> abbreviation = ReadText(folder, L"Abbreviation"))
        m_Abbreviation = abbreviation;
    // "Language" is written but not read back: a loaded Bible keeps its own.
    SmartPtr<IDataStream> text;
    auto name = Key(L"BibleText");
    if (folder->OpenFolder(name, 0, text.Receive()) < 0 || !text) {
        Load();
        m_Property3 = 1;
        return S_OK;
    }
    Collection::Load(text, 0);
    m_Property3 = 0;
    return S_OK;
}
