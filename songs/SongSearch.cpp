// Does a song match what the user typed into the song list's search box?
// Plain text looks through the verses, "#" at the CCLI number, "field=value" at
// one attribute.
#include "songs/SongSearch.h"

#include <cwchar>

#include "persistence/TextLine.h"
#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "songs/VXSong.h"

namespace {

// The C locale's fold. Its table reaches from -128 to 255 and lowers "A" to "Z" alone,
// whatever locale the application has set: written out, it costs no call a character.
inline wchar_t Fold(wchar_t c) { return (c >= L'A' && c <= L'Z') ? wchar_t(c + (L'a' - L'A')) : c; }

// The short words that the song list offers for the common attributes.
struct FieldWord {
    const wchar_t* word;
    const wchar_t* attribute;
};
constexpr FieldWord kFieldWords[] = {
    {L"auth", L"author"},       {L"artist", L"author"},           {L"art", L"author"},
    {L"author", L"author"},     {L"ccli", L"ccli_number"},        {L"ccli number", L"ccli_number"},
    {L"ccli_number", L"ccli_number"}, {L"comm", L"comments"},     {L"comments", L"comments"},
    {L"cat", L"category"},      {L"category", L"category"},       {L"copyright", L"copyright"},
    {L"key", L"key"},           {L"title", L"title"},
};

// Whole-word comparison without regard to ASCII case.
bool SameWord(CREFString text, const wchar_t* word)
{
    int32_t i = 0;
    for (; i < text.m_Length && word[i]; ++i)
        if (Fold(text.m_Buffer[i]) != Fold(word[i]))
            return false;
    return i == text.m_Length && word[i] == 0;
}

// The attribute's value contains value; false if the song has no such attribute.
bool AttributeContains(CVXSong* song, CREFString name, CREFString value)
{
    auto key = SmartPtr<IString>::Adopt(ISCreate(name));
    SmartPtr<IString> attribute;
    if (song->get_AttributeByName(key, attribute.Receive()) < 0)
        return false;
    return ContainsNoCase(CREFString(attribute.get()), value);
}

} // namespace

bool ContainsNoCase(CREFString haystack, CREFString needle)
{
    if (haystack.m_Length < 1 || needle.m_Length < 1 || !haystack.m_Buffer || !needle.m_Buffer)
        return false;
    int32_t j = 0;
    for (int32_t i = 0; i < haystack.m_Length;) {
        wchar_t c = Fold(haystack.m_Buffer[i]);
        if (c == Fold(needle.m_Buffer[j])) {
            if (++j == needle.m_Length)
                return true;
        } else if (j > 0) {
            // The same haystack character is tried against the needle's start.
            j = 0;
            continue;
        }
        ++i;
    }
    return false;
}

int32_t CVXSong::Find(IString* query, int, IUnknown**)
{
    CREFString text(query ? static_cast<IUnknown*>(query) : nullptr);
    bool empty = text.m_Length < 1 || !text.m_Buffer;
    int32_t equals = 0;
    while (!empty && equals < text.m_Length && text.m_Buffer[equals] != L'=')
        ++equals;
    // A song list searches songs it has not opened yet: the first search reads the
    // file. The verses are left to be cut when they are wanted, unless an owner is
    // listening for them.
    if (!m_Parent)
        LoadAttributes();
    else
        Load();
    if (empty)
        return E_FAIL;
    if (text.m_Buffer[0] == L'#')
        return AttributeContains(this, REFLiteral(L"ccli_number"), CREFString(text.m_Buffer + 1, text.m_Length - 1))
                   ? S_OK
                   : E_FAIL;
    if (equals < text.m_Length - 1) {
        CREFString field(text.m_Buffer, equals);
        CREFString value(text.m_Buffer + equals + 1, text.m_Length - equals - 1);
        for (CREFString* part : {&field, &value}) {
            TextTrimLeft(*part);
            TextTrimRight(*part);
        }
        CREFString name = field;
        for (const FieldWord& entry : kFieldWords)
            if (SameWord(field, entry.word)) {
                name = CREFString(entry.attribute);
                break;
            }
        return AttributeContains(this, name, value) ? S_OK : E_FAIL;
    }
    // Only the verse texts are looked at, not their names. Uncut verses are looked
    // through where they stand, each as the verse would hold it.
    bool found = false;
    if (ScanPendingVerses(text, &found))
        return found ? S_OK : E_FAIL;
    SmartPtr<IString> verse;
    for (int index = 0; get_Verse(1, index, 1, verse.Receive()) >= 0; ++index) {
        if (ContainsNoCase(CREFString(verse.get()), text))
            return S_OK;
        verse.Clear();
    }
    return E_FAIL;
}
