// The song's text forms: the tagged file body with its attribute block, the bare
// verse tags, and the dispatch to the plain form.
#include "persistence/PropertyNames.h"
#include "persistence/TagScan.h"
#include "persistence/TextLine.h"
#include "runtime/Factories.h"
#include "runtime/ValueConversion.h"
#include "songs/VXSong.h"

namespace {

void Put(ICreatableString* text, tagREFString part) { text->Append(part); }

// Both trims, the right one only if something is left.
void TrimBoth(CREFString& view)
{
    TextTrimLeft(view);
    if (view.m_Length > 0)
        TextTrimRight(view);
}

// The first opening tag of text: the first "<" before the last character that no
// "/" follows, up to the first ">" behind it. False if there is none.
bool FirstOpeningTag(const CREFString& text, CREFString* name, int32_t* end)
{
    int32_t open = -1;
    for (int32_t i = 0; i + 1 < text.m_Length; ++i) {
        if (text.m_Buffer[i] == L'<' && text.m_Buffer[i + 1] != L'/') {
            open = i;
            break;
        }
    }
    if (open < 0)
        return false;
    for (int32_t i = open; i < text.m_Length; ++i) {
        if (text.m_Buffer[i] == L'>') {
            *name = CREFString(text.m_Buffer + open + 1, i - open - 1);
            *end = i + 1;
            return true;
        }
    }
    return false;
}

SmartPtr<IString> MakeString(tagREFString text) { return SmartPtr<IString>::Adopt(ISCreate(text)); }

} // namespace

int32_t CVXSong::GetText(IString** out, short flags)
{
    if (!out)
        return E_POINTER;
    auto text = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    Lock();
    PrintText(text, flags);
    Unlock();
    *out = text.Detach();
    return S_OK;
}

void CVXSong::PrintText(ICreatableString* text, short flags)
{
    if (flags & SONGTEXT_HEADER) {
        // "UNICODE" although the bytes are UTF-16LE: every song file says so.
        Put(text, REFLiteral(L"<?xml version=\"1.0\" encoding=\"UNICODE\"?>\r\n"));
        Put(text, REFLiteral(L"<song xmlns=\"tarnwick/song\">\r\n"));
        PrintAttributes(text);
    }
    if (flags & SONGTEXT_VERSES)
        Put(text, REFLiteral(L"<verses>\r\n"));
    int count = 0;
    get_Count(&count);
    for (int i = 0; i < count; ++i) {
        if (flags & SONGTEXT_VERSETAGS) {
            SmartPtr<IString> itemName;
            get_ItemName(i, itemName.Receive());
            CREFString id(itemName.get());
            for (int32_t k = 0; k < id.m_Length; ++k)
                if (id.m_Buffer[k] == L':')
                    id.m_Length = k;
            TextTrimRight(id);
            Put(text, REFLiteral(L"<verse id=\""));
            Put(text, id);
            Put(text, REFLiteral(L"\">\r\n"));
        }
        SmartPtr<IUnknown> verse;
        get_Item(i, verse.Receive());
        CREFString body(verse.get());
        TrimBoth(body);
        Put(text, body);
        Put(text, REFLiteral(L"\r\n"));
        if (flags & SONGTEXT_VERSETAGS)
            Put(text, REFLiteral(L"</verse>\r\n"));
        Put(text, REFLiteral(L"\r\n"));
    }
    // The song's closing tag is never written; no reader asks for it.
    if (flags & SONGTEXT_VERSES)
        Put(text, REFLiteral(L"</verses>\r\n"));
}

void CVXSong::PrintAttributes(ICreatableString* text)
{
    int count = 0;
    if (!m_Attributes || m_Attributes->get_Count(&count) < 0 || count < 1)
        return;
    Put(text, REFLiteral(L"<attributes>\r\n"));
    for (int i = 0; i < count; ++i) {
        SmartPtr<IString> name;
        SmartPtr<IUnknown> value;
        m_Attributes->get_ItemName(i, name.Receive());
        m_Attributes->get_Item(i, value.Receive());
        // Nothing is escaped: a "<" in a value goes out as it stands.
        Put(text, REFLiteral(L"<"));
        Put(text, CREFString(name.get()));
        Put(text, REFLiteral(L">"));
        if (auto string = QueryAs<IString>(value.get()))
            Put(text, CREFString(string.get()));
        Put(text, REFLiteral(L"</"));
        Put(text, CREFString(name.get()));
        Put(text, REFLiteral(L">\r\n"));
    }
    Put(text, REFLiteral(L"</attributes>\r\n"));
}

int32_t CVXSong::SetVerses(tagREFString text, short mode)
{
    // Every verse made here asks for the same string table: it is looked up once.
    PROPTableHold tables;
    if (mode == SONGVERSES_CCLI)
        return ImportCCLI(text);
    // The caller's text may be this song's own: scan a copy.
    auto copy = MakeString(text);
    CREFString source(copy.get());
    m_Modified = 1;
    Lock();
    // The present item names, to be given back by position after a plain edit.
    auto kept = SmartPtr<ISimpleCollection>::Adopt(BASEObject::CreateSimpleCollection());
    auto keptNames = kept.As<ICreatableSimpleCollection>();
    for (int i = 0; keptNames; ++i) {
        SmartPtr<IString> name;
        if (get_ItemName(i, name.Receive()) < 0)
            break;
        keptNames->Add(name);
    }
    CollectionClear();

    if (!SplitVerses(source)) {
        int count = 0;
        if (kept)
            kept->get_Count(&count);
        for (int i = 0; i < count; ++i) {
            SmartPtr<IUnknown> item;
            kept->get_Item(i, item.Receive());
            if (auto name = QueryAs<IString>(item.get()))
                Rename(i, name);
        }
    }
    Unlock();
    return S_OK;
}

bool CVXSong::SplitVerses(CREFString source)
{
    CREFString attributes;
    CREFString body;
    CREFString verses(L"verses");
    CREFString scan = source;
    CREFString tagName;
    int32_t tagEnd = 0;
    if (XMLGetTAGGED(scan, verses, attributes, body, 0) >= 0) {
        SplitTagged(body);
        return true;
    }
    if (FirstOpeningTag(source, &tagName, &tagEnd) && tagName.CompareI(REFLiteral(L"Verse"), 0) >= 0) {
        // Qualified by any tag that begins like "verse"; the elements are looked
        // for as "verse" alone, so "<Verse>" by itself yields no verses.
        SplitTagged(source);
        return true;
    }
    SplitPlain(source);
    return false;
}

void CVXSong::SplitTagged(CREFString text)
{
    CREFString tag(L"verse");
    CREFString attributes;
    CREFString verse;
    int index = 0;
    while (XMLGetTAGGED(text, tag, attributes, verse, 1) >= 0) {
        TrimBoth(verse);
        // A blank verse element takes no number.
        if (verse.m_Length < 1)
            continue;
        // Whatever attribute comes first names the verse.
        CREFString name;
        CREFString value;
        XMLGetNextTAGAttribute(attributes, name, value);
        AddVerse(value, verse, index++);
    }
}

int32_t CVXSong::GetAttributeTags(tagREFString text, int)
{
    auto copy = MakeString(text);
    CREFString source(copy.get());
    Lock();
    CREFString attributes(L"attributes");
    CREFString ignored;
    CREFString body;
    if (m_Attributes && XMLGetTAGGED(source, attributes, ignored, body, 0) >= 0) {
        CREFString name;
        int32_t end = 0;
        while (FirstOpeningTag(body, &name, &end)) {
            CREFString value;
            if (XMLGetTAGGED(body, name, ignored, value, 1) < 0) {
                // Never seen, as the tag was just found; still, step past it.
                body = CREFString(body.m_Buffer + end, body.m_Length - end);
                continue;
            }
            TrimBoth(value);
            if (value.m_Length < 1)
                continue;
            // A first value wins: a reload keeps what the song already held.
            auto key = MakeString(name);
            int index = -1;
            if (m_Attributes->get_Index(key, &index) >= 0 && index >= 0)
                continue;
            if (auto creatable = m_Attributes.As<IParametersCreatable>())
                creatable->Add(key, MakeString(value), nullptr, 0);
        }
    }
    Unlock();
    return S_OK;
}
