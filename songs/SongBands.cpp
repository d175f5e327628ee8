// The bands above and below a verse on the screen: the title and the verse's name
// on top, the credits below, each steered by the verse's own switches.
#include <cctype>

#include "persistence/TextLine.h"
#include "runtime/Factories.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "songs/VXSong.h"

namespace {

SmartPtr<IString> Attribute(CVXSong* song, const wchar_t* name)
{
    SmartPtr<IString> value;
    song->get_AttributeByName(SmartPtr<IString>::Adopt(ISCreate(name)), value.Receive());
    return value;
}

// Characters that a screen's narrow band can take: no blanks, controls or punctuation.
// The C library's table reaches up to 255; all beyond counts as a letter.
bool Printable(wchar_t c) { return c >= 33 && (c > 255 || !std::ispunct(int(c))); }

// Appends the printable characters of text, at most limit of them (below 0: all).
void AppendPrintable(ICreatableString* out, CREFString text, int limit)
{
    int copied = 0;
    for (int32_t i = 0; i < text.m_Length; ++i) {
        if (!Printable(text.m_Buffer[i]))
            continue;
        out->Append(CREFString(text.m_Buffer + i, 1));
        // The short form stops only once more than ten have gone in: eleven at most.
        if (limit >= 0 && ++copied > limit)
            break;
    }
}

// False when the display rule keeps the band off this verse.
bool Displayed(int display, int verse, int verses)
{
    return !(display == DISPLAY_NEVER || (display == DISPLAY_FIRST && verse > 0) ||
             (display == DISPLAY_LAST && verse < verses - 1));
}

int Switch(IVXSongVerse* verse, int code)
{
    int value = 0;
    verse->Inquire(code, &value);
    return value;
}

} // namespace

int32_t CVXSong::Header(IString** out, int chapter, int verse, int, IUnknown* object)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    auto shown = QueryAs<IVXSongVerse>(object);
    int verses = 0;
    get_Count(&verses);
    bool showTitle = true;
    bool showName = verse >= 0;
    if (shown) {
        showTitle = Switch(shown, VERSE_SHOWTITLE) != 0;
        showName = Switch(shown, VERSE_SHOWVERSENAME) != 0;
        if (!Displayed(Switch(shown, VERSE_HEADERDISPLAY), verse, verses))
            return E_FAIL;
    }
    SmartPtr<IString> title;
    if (showTitle) {
        title = Attribute(this, L"title");
        CREFString trimmed(title.get());
        TextTrimLeft(trimmed);
        // A song without a title is called by its file's name.
        if (trimmed.IsEmpty()) {
            title.Clear();
            get_Name(title.Receive());
        }
    }
    CREFString titleText(title.get());
    auto result = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (chapter == HEADER_SHORT)
        AppendPrintable(result, titleText, 10);
    else if (titleText.m_Length > 0)
        result->Append(titleText);
    SmartPtr<IString> itemName;
    if (showName && get_ItemName(verse, itemName.Receive()) >= 0) {
        CREFString name(itemName.get());
        int32_t colon = 0;
        while (colon < name.m_Length && name.m_Buffer[colon] != L':')
            ++colon;
        CREFString id(name.m_Buffer, colon);
        TextTrimLeft(id);
        TextTrimRight(id);
        if (!id.IsEmpty()) {
            if (titleText.m_Length > 0)
                result->Append(REFLiteral(L": "));
            AppendPrintable(result, id, -1);
        }
    }
    *out = result.Detach();
    return S_OK;
}

int32_t CVXSong::Footer(IString** out, int, int verse, int, IUnknown* object)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    auto shown = QueryAs<IVXSongVerse>(object);
    int showCCLI = 0, showCopyright = 0, showAuthor = 0, showTitle = 0, display = DISPLAY_NEVER;
    if (shown) {
        showCCLI = Switch(shown, VERSE_SHOWCCLI);
        showCopyright = Switch(shown, VERSE_SHOWCOPYRIGHT);
        showAuthor = Switch(shown, VERSE_SHOWAUTHOR);
        showTitle = Switch(shown, VERSE_SHOWFOOTTITLE);
        display = Switch(shown, VERSE_FOOTERDISPLAY);
    }
    int verses = 0;
    get_Count(&verses);
    if (!Displayed(display, verse, verses))
        return E_FAIL;
    auto result = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    bool empty = true;
    auto add = [&](CREFString part) {
        if (!empty)
            result->Append(REFLiteral(L"; "));
        result->Append(part);
        empty = false;
    };
    if (showCCLI) {
        // The licence belongs to the installation, not to the song.
        auto registry = SmartPtr<IRegistry>::Adopt(BASEObject::CreateRegistry());
        SmartPtr<IString> licence;
        if (registry &&
            registry->get_Value(SmartPtr<IString>::Adopt(ISCreate(L"Vexilon")), SmartPtr<IString>::Adopt(ISCreate(L"CCLI")),
                                licence.Receive()) >= 0) {
            CREFString number(licence.get());
            TextTrimRight(number);
            if (!number.IsEmpty()) {
                result->Append(REFLiteral(L"CCLI# "));
                result->Append(number);
                empty = false;
            }
        }
    }
    const std::pair<int, const wchar_t*> parts[] = {
        {showTitle, L"title"}, {showAuthor, L"author"}, {showCopyright, L"copyright"}};
    for (auto [on, name] : parts) {
        if (!on)
            continue;
        auto value = Attribute(this, name);
        CREFString text(value.get());
        if (text.m_Length > 0)
            add(text);
    }
    if (empty)
        return E_FAIL;
    *out = result.Detach();
    return S_OK;
}
