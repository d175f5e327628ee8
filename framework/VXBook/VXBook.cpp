#include "framework/VXBook/VXBook.h"

#include <cwchar>

#include "runtime/ValueConversion.h"

namespace {

std::wstring TextOf(IUnknown* object)
{
    CREFString view(object);
    return view.IsEmpty() ? std::wstring() : std::wstring(view.m_Buffer, size_t(view.m_Length));
}

bool IsNameAttribute(IString* name)
{
    CREFString view(name);
    return view.m_Length == 4 && CREFString(L"name").CompareI(view, 0) == S_OK;
}

// Walks the entries that are content, not attributes: each with its item.
template <class Visit> void EachEntry(IParameters* entries, Visit visit)
{
    int count = 0;
    entries->get_Count(&count);
    for (int i = 0; i < count; ++i) {
        int flags = 0;
        entries->get_ItemFlags(i, &flags);
        SmartPtr<IString> name;
        entries->get_ItemName(i, name.Receive());
        SmartPtr<IUnknown> item;
        entries->get_Item(i, item.Receive());
        visit(name.get(), item.get(), (flags & PARAMETER_XMLATTRIBUTE) != 0);
    }
}

void AppendNumber(std::wstring& text, const wchar_t* format, int a, int b = 0)
{
    wchar_t buffer[48];
    std::swprintf(buffer, 48, format, a, b);
    text += buffer;
}

} // namespace

int32_t CVXBook::Load(IParameters* content)
{
    if (!content)
        return E_POINTER;
    m_Chapters.clear();
    EachEntry(content, [&](IString* name, IUnknown* item, bool attribute) {
        if (attribute) {
            if (IsNameAttribute(name))
                m_Name = TextOf(item);
            return;
        }
        if (auto chapter = QueryAs<IParameters>(item)) {
            m_Chapters.emplace_back();
            EachEntry(chapter, [&](IString*, IUnknown* verse, bool isAttribute) {
                if (!isAttribute)
                    m_Chapters.back().push_back(TextOf(verse));
            });
            return;
        }
        if (m_Chapters.empty())
            m_Chapters.emplace_back();
        m_Chapters.back().push_back(TextOf(item));
    });
    return S_OK;
}

int32_t CVXBook::get_ChapterCount(int* count)
{
    if (!count)
        return E_POINTER;
    *count = int(m_Chapters.size());
    return S_OK;
}

int32_t CVXBook::get_VerseCount(int chapter, int* count)
{
    if (!count)
        return E_POINTER;
    if (chapter < 0 || size_t(chapter) >= m_Chapters.size())
        return E_FAIL;
    *count = int(m_Chapters[size_t(chapter)].size());
    return S_OK;
}

int32_t CVXBook::get_Verse(int chapter, int verse, int count, IString** out)
{
    if (!out)
        return E_POINTER;
    if (chapter < 0 || size_t(chapter) >= m_Chapters.size())
        return E_FAIL;
    const std::vector<std::wstring>& verses = m_Chapters[size_t(chapter)];
    if (verse < 0 || size_t(verse) >= verses.size())
        return E_FAIL;
    // A count past the end, BIBLE_VERSES_TO_END among them, runs to the chapter's end.
    size_t last = count <= 1 ? size_t(verse) : size_t(verse) + size_t(count) - 1;
    if (last >= verses.size())
        last = verses.size() - 1;
    std::wstring text;
    for (size_t i = size_t(verse); i <= last; ++i) {
        if (i > size_t(verse))
            text += L"\r\n";
        AppendNumber(text, L"%d:\t", int(i + 1));
        text += verses[i];
    }
    *out = ISCreate(CREFString(text.data(), int32_t(text.size())));
    return *out ? S_OK : E_FAIL;
}

int32_t CVXBook::Header(IString** out, int chapter, int verse, int count, IUnknown* /*context*/)
{
    if (!out)
        return E_POINTER;
    std::wstring text = m_Name;
    if (chapter >= 0) {
        text += L" ";
        // A book of one chapter is cited by its verses alone.
        bool chaptered = m_Chapters.size() > 1;
        if (chaptered && verse < 0)
            AppendNumber(text, L"%d", chapter + 1);
        else if (chaptered)
            AppendNumber(text, L"%d:%d", chapter + 1, verse + 1);
        else if (verse >= 0)
            AppendNumber(text, L"%d", verse + 1);
        if (verse >= 0 && count == BIBLE_VERSES_TO_END)
            text += L"-";
        else if (verse >= 0 && count >= 2)
            AppendNumber(text, L"-%d", verse + count);
    }
    *out = ISCreate(CREFString(text.data(), int32_t(text.size())));
    return *out ? S_OK : E_FAIL;
}
