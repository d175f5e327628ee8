#include "bible/VXBibleBook.h"

#include "persistence/TextLine.h"
#include "runtime/Factories.h"
#include "runtime/ModuleClasses.h"
#include "runtime/ValueConversion.h"

int32_t CreateVXBibleBook(void* outer, IID* iid, void** object)
{
    return CObject<CVXBibleBook>::_CreateInstance(outer, iid, object);
}

CVXBibleBook::CVXBibleBook()
{
    m_Filter.Attach(ISCreate(L"Bible files (*.bbl)|*.bbl;|Text files (*.txt)|*.txt;|HTML files "
                             L"(*.htm,*.html)|*.htm;*.html|All Files (*.*)|*.*||"));
}

int32_t CVXBibleBook::FinalConstruct()
{
    m_SearchResults.Attach(BASEObject::CreateNamedCollection());
    m_UserName.Attach(ISCreate(L""));
    m_NameInText.Attach(ISCreate(L""));
    m_Translation.Attach(ISCreate(L""));
    // A translation gives its books their names through these.
    Prop(BOOK_PROP_USERNAME, &m_UserName, PROPTYPE_STRING);
    Prop(BOOK_PROP_NAMEINTEXT, &m_NameInText, PROPTYPE_STRING);
    Prop(BOOK_PROP_TRANSLATION, &m_Translation, PROPTYPE_STRING);
    return S_OK;
}

void CVXBibleBook::FinalRelease()
{
    // Every chapter and verse points into the text: the index goes before the text.
    m_SearchResults = nullptr;
    CollectionClear();
    delete[] m_Text;
    m_Text = nullptr;
    m_TextLength = 0;
    m_RetiredText.clear();
}

void CVXBibleBook::RetireText()
{
    if (m_Text)
        m_RetiredText.emplace_back(m_Text);
    m_Text = nullptr;
    m_TextLength = 0;
}

int32_t CVXBibleBook::Footer(IString**, int, int, int, IUnknown*)
{
    // A Bible book has no footer.
    return E_NOTIMPL;
}

int32_t CVXBibleBook::Header(IString** out, int chapter, int verse, int count, IUnknown*)
{
    if (!out)
        return E_POINTER;
    auto header = SmartPtr<ICreatableString>::Adopt(CREFString::CreateString());
    if (!header)
        return E_FAIL;
    header->Append(CREFString(m_UserName.get()));
    // The bare name serves the translation for file names.
    if (chapter < 0) {
        *out = header.Detach();
        return S_OK;
    }
    {
        header->Append(REFLiteral(L" "));
        int chapters = 0;
        get_ChapterCount(&chapters);
        wchar_t number[256] = {};
        long long first = (long long)verse + 1;
        long long last = (long long)verse + count;
        if (chapters > 1) {
            int shown = chapter + 1;
            if (verse < 0)
                _swprintf(number, 256, L"%d", shown);
            else if (count == BIBLE_VERSES_TO_END)
                _swprintf(number, 256, L"%d:%lld-", shown, first);
            else if (count >= 2)
                _swprintf(number, 256, L"%d:%lld-%lld", shown, first, last);
            else
                _swprintf(number, 256, L"%d:%lld", shown, first);
        } else if (verse >= 0) {
            if (count == BIBLE_VERSES_TO_END)
                _swprintf(number, 256, L"%lld-", first);
            else if (count >= 2)
                _swprintf(number, 256, L"%lld-%lld", first, last);
            else
                _swprintf(number, 256, L"%lld", first);
        }
        header->Append(CREFString(number));
    }
    CREFString translation(m_Translation.get());
    TextTrimLeft(translation);
    if (!translation.IsEmpty()) {
        header->Append(REFLiteral(L" ["));
        header->Append(translation);
        header->Append(REFLiteral(L"]"));
    }
    *out = header.Detach();
    return S_OK;
}

int32_t CVXBibleBook::get_ChapterCount(int* count)
{
    if (!count)
        return E_POINTER;
    if (m_HasChapters == 0) {
        *count = 1;
        return S_OK;
    }
    return get_Count(count);
}

int32_t CVXBibleBook::get_VerseCount(int chapter, int* count)
{
    if (!count)
        return E_POINTER;
    *count = 0;
    if (m_HasChapters == 0) {
        if (chapter == 0)
            get_Count(count);
        return S_OK;
    }
    SmartPtr<IUnknown> item;
    if (get_Item(chapter, item.Receive()) >= 0)
        if (auto verses = item.As<ISuperCollection>())
            verses->get_Count(count);
    return S_OK;
}

int32_t CVXBibleBook::VerifyInterface(IUnknown* item, IUnknown** verified)
{
    if (!item)
        return E_FAIL;
    return item->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(verified)) < 0 ? E_FAIL : S_OK;
}

int32_t CVXBibleBook::GetBuffer(wchar_t** text, int* length)
{
    if (text)
        *text = m_Text;
    if (length)
        *length = m_HasChapters == 0 ? m_TextLength : 0;
    return S_OK;
}
