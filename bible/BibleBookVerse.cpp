// Finding verses by the numbers written in the file, with their position as the first guess.
#include "bible/VXBibleBook.h"
#include "runtime/Factories.h"
#include "runtime/ValueConversion.h"

namespace {

// The verse number of an item, less 1, as written in front of its first ":" (failing
// that, its first "."); false for an item without either, or with the mark first.
bool ItemVerse(ISuperCollection* verses, int position, SmartPtr<IString>* item, int* number)
{
    SmartPtr<IUnknown> found;
    if (verses->get_Item(position, found.Receive()) < 0 || !found)
        return false;
    *item = found.As<IString>();
    if (!*item)
        return false;
    CREFString text(item->get());
    int32_t mark = -1;
    for (wchar_t wanted : {L':', L'.'}) {
        for (int32_t i = 0; i < text.m_Length && mark < 0; ++i)
            if (text.m_Buffer[i] == wanted)
                mark = i;
        if (mark >= 0)
            break;
    }
    if (mark < 1)
        return false;
    *number = _IS2Integer(CREFString(text.m_Buffer, mark), 10) - 1;
    return true;
}

} // namespace

SmartPtr<ISuperCollection> CVXBibleBook::VerseList(int chapter)
{
    if (m_HasChapters == 0)
        return QueryAs<ISuperCollection>(static_cast<Collection*>(this));
    SmartPtr<IUnknown> item;
    if (chapter < 0 || get_Item(chapter, item.Receive()) < 0)
        return {};
    return item.As<ISuperCollection>();
}

int32_t CVXBibleBook::get_Verse(int chapter, int verse, int count, IString** text)
{
    if (!text)
        return E_POINTER;
    auto verses = VerseList(chapter);
    if (!verses)
        return E_FAIL;
    int total = 0;
    verses->get_Count(&total);
    long long reach = (long long)verse + count;
    int last = reach > total ? total - 1 : int(reach - 1);

    // Forward while the numbers are behind, and one step back at most.
    int position = verse;
    bool steppedBack = false;
    bool found = false;
    SmartPtr<IString> item;
    for (;;) {
        int number = 0;
        if (!ItemVerse(verses, position, &item, &number))
            return E_FAIL;
        if (number == verse) {
            found = true;
            break;
        }
        if (number < verse) {
            ++position;
            continue;
        }
        if (steppedBack)
            break;
        steppedBack = true;
        --position;
    }
    int32_t result = found ? S_OK : S_FALSE;
    if (last == verse) {
        *text = item.Detach();
        return result;
    }

    wchar_t* start = nullptr;
    int firstLength = 0;
    item->GetBuffer(&start, &firstLength);
    long long length = firstLength;
    SmartPtr<IUnknown> lastItem;
    auto lastText = SmartPtr<IString>();
    if (verses->get_Item(last, lastItem.Receive()) >= 0)
        lastText = lastItem.As<IString>();
    if (!lastText) {
        count = 1;
    } else {
        wchar_t* end = nullptr;
        lastText->GetBuffer(&end, nullptr);
        length = end - start;
        SmartPtr<IUnknown> attached;
        if (verses->get_ItemAttached(last, attached.Receive()) >= 0)
            if (auto lineLength = attached.As<IVariant>())
                length += lineLength->get_Integer();
    }
    auto range = SmartPtr<IVXTextReference>::Adopt(VXCoreObject::CreateVXTextReference());
    if (!range)
        return E_FAIL;
    range->SetReference(this, start, int(length), chapter, verse, count);
    *text = range.As<IString>().Detach();
    return result;
}
