#include "songs/VXSong.h"

#include <utility>

#include "persistence/TextLine.h"
#include "runtime/Factories.h"
#include "runtime/Module.h"
#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"

int32_t CreateVXSong(void* outer, IID* iid, void** object)
{
    return CObject<CVXSong>::_CreateInstance(outer, iid, object);
}

CVXSong::CVXSong()
{
    m_Filter.Attach(ISCreate(L"Song files (*.sng)|*.sng;|Text files (*.txt)|*.txt;||"));
    auto attributes = SmartPtr<IParametersCreatable>::Adopt(BASEObject::CreateParameters());
    m_Attributes = attributes.As<IParameters>();
}

int32_t CVXSong::get_AttributeByName(IString* name, IString** value)
{
    if (!m_Attributes)
        return E_FAIL;
    Lock();
    int index = -1;
    int32_t result = E_FAIL;
    if (m_Attributes->get_Index(name, &index) >= 0 && index >= 0) {
        result = S_OK;
        SmartPtr<IUnknown> item;
        m_Attributes->get_Item(index, item.Receive());
        // An item that is no string leaves the caller's pointer as it was.
        if (auto text = QueryAs<IString>(item.get()); text && value)
            *value = text.Detach();
    }
    Unlock();
    return result;
}

int32_t CVXSong::put_AttributeByName(IString* name, IString* value)
{
    if (!m_Attributes)
        return E_FAIL;
    Lock();
    int index = -1;
    int32_t result = S_OK;
    if (m_Attributes->get_Index(name, &index) >= 0 && index >= 0) {
        m_Attributes->put_Item(index, value);
    } else {
        auto creatable = m_Attributes.As<IParametersCreatable>();
        result = creatable ? creatable->Add(name, value, nullptr, 0) : E_FAIL;
    }
    m_Modified = 1;
    Unlock();
    return result;
}

int32_t CVXSong::GetBuffer(wchar_t** text, int* length)
{
    // One text for all songs of the process: the previous caller's pointer dies here.
    static SmartPtr<IString> Text;
    Text.Clear();
    GetText(Text.Receive(), 0);
    CREFString view(Text.get());
    if (text)
        *text = view.m_Buffer;
    if (length)
        *length = view.m_Length;
    return S_OK;
}

int32_t CVXSong::Clone(tagREFString text)
{
    SetVerses(text, SONGVERSES_PARSE);
    m_Modified = 1;
    return S_OK;
}

int32_t CVXSong::Append(tagREFString)
{
    // Text is not appended to a song by this road.
    return E_FAIL;
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

int32_t CVXSong::GetPages(int, INamedCollection** pages, IUnknown**)
{
    if (!pages)
        return E_POINTER;
    *pages = nullptr;
    auto list = SmartPtr<ISuperCollection>::Adopt(CREFString::CreateCollection());
    // The pages show the song's content: it is read now if it was not yet.
    if (m_HasFile == 0)
        Load();
    m_HasFile = 2;
    const std::pair<const wchar_t*, const wchar_t*> kPages[] = {{L"Song", L"VXVisualText"},
                                                                {L"Text", L"VXTextPropPage"},
                                                                {L"Attributes", L"UIParametersPropPage"},
                                                                {L"", L"UIFileArchivePropPage"}};
    if (!list)
        return S_OK;
    for (auto [name, component] : kPages)
        list->Add(SmartPtr<IString>::Adopt(ISCreate(name)), SmartPtr<IString>::Adopt(ISCreate(component)), nullptr, 0);
    *pages = list.As<INamedCollection>().Detach();
    return S_OK;
}

int32_t CVXSong::get_Parent(IUnknown** parent)
{
    if (!parent)
        return E_POINTER;
    *parent = m_Parent.Copy();
    return *parent ? S_OK : E_FAIL;
}

int32_t CVXSong::put_Parent(IUnknown* parent)
{
    // Verses cut later would tell the new owner of changes it never saw happen.
    CutPendingVerses();
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

int32_t CVXSong::Unload()
{
    Clear();
    m_HasFile = 0;
    return S_OK;
}

void CVXSong::SendChange()
{
    if (auto events = m_Parent.As<_IUIRefreshEvent>())
        events->UIItemChanged(Primary(), 0);
}
