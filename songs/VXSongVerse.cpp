#include "songs/VXSongVerse.h"

#include "runtime/Factories.h"
#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"

int32_t CreateVXSongVerse(void* outer, IID* iid, void** object)
{
    return CObject<CVXSongVerse>::_CreateInstance(outer, iid, object);
}

namespace {

// The edit bias: a verse whose text was set by hand no longer comes from its song.
constexpr int32_t kEditBias = 100;
// The type words of the verse's properties.
constexpr int kNumberType = 0x80053;
constexpr int kSwitchType = 19;
constexpr int kDisplayType = 67;
constexpr int kProp20Type = 0x4048006;
// The string table entry that holds the labels of the display choices.
constexpr int kDisplayLabels = 30;

} // namespace

int32_t CVXSongVerse::FinalConstruct()
{
    m_Prop20.Attach(ISCreate(L""));
    // Without the string table's labels a display still is a property, only one
    // whose choices have no names.
    auto display = [this](int code, int32_t* field) {
        if (PropE(code, kDisplayLabels, field, kDisplayType, nullptr, nullptr) < 0)
            Prop(code, field, kDisplayType);
    };
    Prop(VERSE_NUMBER, &m_VerseNb, kNumberType);
    Prop(VERSE_SHOWTITLE, &m_ShowTitle, kSwitchType);
    Prop(VERSE_SHOWVERSENAME, &m_ShowVerseName, kSwitchType);
    display(VERSE_HEADERDISPLAY, &m_HeaderDisplay);
    Prop(VERSE_PROP20, &m_Prop20, kProp20Type);
    Prop(VERSE_SHOWFOOTTITLE, &m_ShowFootTitle, kSwitchType);
    Prop(VERSE_SHOWCOPYRIGHT, &m_ShowCopyright, kSwitchType);
    Prop(VERSE_SHOWAUTHOR, &m_ShowAuthor, kSwitchType);
    Prop(VERSE_SHOWCCLI, &m_ShowCCLI, kSwitchType);
    display(VERSE_FOOTERDISPLAY, &m_FooterDisplay);
    return S_OK;
}

int32_t CVXSongVerse::get_FooterStyle(IVXRenderStyle**) { return E_FAIL; }
int32_t CVXSongVerse::put_FooterStyle(IVXRenderStyle*) { return E_FAIL; }
int32_t CVXSongVerse::get_HeaderStyle(IVXRenderStyle**) { return E_FAIL; }
int32_t CVXSongVerse::put_HeaderStyle(IVXRenderStyle*) { return E_FAIL; }

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

int32_t CVXSongVerse::Inquire(int code, int* value)
{
    int32_t result = Properties::Inquire(code, value);
    // Readers see the index, not the bias; a second edit stays negative.
    if (code == VERSE_NUMBER && result >= 0 && value && *value < 0)
        *value += kEditBias;
    return result;
}

// Writing the number plainly clears the edit bias.
int32_t CVXSongVerse::Control(int code, int value) { return Properties::Control(code, value); }

// The verse keeps no object properties that a page could set.
int32_t CVXSongVerse::ControlEx(int, IUnknown*) { return S_OK; }

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

int32_t CVXSongVerse::CopyAttributes(IVXRenderStyle* source)
{
    if (!source || source == static_cast<IVXRenderStyle*>(this))
        return S_OK;
    Lock();
    // The default style's marker is no object to ask.
    if (source != kRenderStyleUIDefault) {
        if (auto verse = QueryAs<IVXSongVerse>(source)) {
            verse->Inquire(VERSE_SHOWTITLE, &m_ShowTitle);
            verse->Inquire(VERSE_SHOWVERSENAME, &m_ShowVerseName);
            verse->Inquire(VERSE_SHOWCOPYRIGHT, &m_ShowCopyright);
            verse->Inquire(VERSE_SHOWAUTHOR, &m_ShowAuthor);
            verse->Inquire(VERSE_SHOWCCLI, &m_ShowCCLI);
            verse->Inquire(VERSE_HEADERDISPLAY, &m_HeaderDisplay);
            verse->Inquire(VERSE_FOOTERDISPLAY, &m_FooterDisplay);
            verse->Inquire(VERSE_SHOWFOOTTITLE, &m_ShowFootTitle);
        }
    }
    int32_t result = IVXRenderStyleImpl::CopyAttributes(source);
    Unlock();
    return result;
}

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

int32_t CVXSongVerse::Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown*, int flags)
{
    if (flags & 1)
        return S_OK;
    Lock();
    auto renderer = SmartPtr<IVXRenderer>::Adopt(UIObject::CreateVXRenderer());
    if (renderer) {
        renderer->put_Mode(4);
        renderer->Prepare(0, static_cast<IVXRenderStyleImpl*>(this), canvas);
        renderer->DrawText(m_Text, rect, 0);
    }
    Unlock();
    return S_OK;
}

int32_t CVXSongVerse::get_Parent(IUnknown** parent)
{
    if (!parent)
        return E_POINTER;
    Lock();
    *parent = m_Source.Copy();
    Unlock();
    return *parent ? S_OK : E_FAIL;
}

// A verse's parent is its source, set through put_Source alone.
int32_t CVXSongVerse::put_Parent(IUnknown*) { return E_NOTIMPL; }

int32_t CVXSongVerse::Replicate(IUnknown** copy)
{
    // A verse replicates as a plain text object, not as a verse.
    auto text = SmartPtr<IVXText>::Adopt(UIObject::CreateVXText());
    if (!text)
        return E_FAIL;
    Lock();
    SmartPtr<IString> own = m_Text;
    Unlock();
    text->put_Text(CREFString(own.get()));
    if (auto style = text.As<IVXRenderStyle>())
        style->CopyAttributes(static_cast<IVXRenderStyleImpl*>(this));
    if (copy)
        *copy = text.As<IUnknown>().Detach();
    return S_OK;
}

int32_t CVXSongVerse::GetPages(int, INamedCollection** pages, IUnknown**)
{
    if (!pages)
        return E_POINTER;
    auto list = SmartPtr<ISuperCollection>::Adopt(BASEObject::CreateNamedCollection());
    if (!list)
        return E_FAIL;
    for (const wchar_t* page :
         {L"VXStuff.VXTextPropPage", L"UIPropPages.UIRenderStylePropPage", L"UIPropInterrogatePropPage"})
        list->Add(SmartPtr<IString>::Adopt(ISCreate(L"")), SmartPtr<IString>::Adopt(ISCreate(page)), nullptr, 0);
    *pages = list.As<INamedCollection>().Detach();
    return S_OK;
}
