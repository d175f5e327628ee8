// Every scanner over random views, the advancing loops run to their end, and the
// number parses. Texts lie in exactly sized heap copies with no terminator, so any
// read behind a view is caught; a loop that stops making progress aborts.
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "runtime/REFString.h"
#include "runtime/ValueConversion.h"

namespace {

// Characters the scanners treat specially, and values at the edges of wchar_t.
const wchar_t kSpecial[] = {L'\n',    L'\r',        L'"',      L'-',        L'.', L'e', L'E',
                            L'+',     L'_',         L'#',      L'/',        L' ', L'\t', 254,
                            239,      wchar_t(-1),  0x10FFFF,  wchar_t(0xFFFF8000), 0x3000, 0x2028, L'0'};

wchar_t CharOf(uint8_t byte)
{
    if (byte >= 0xE0)
        return kSpecial[(byte - 0xE0) % (sizeof(kSpecial) / sizeof(kSpecial[0]))];
    return wchar_t(byte);
}

struct Text {
    std::unique_ptr<wchar_t[]> m_Data;
    int32_t m_Length = 0;
    CREFString View() const { return CREFString(m_Data.get(), m_Length); }
};

Text MakeText(const uint8_t* data, size_t size)
{
    Text text;
    text.m_Data.reset(new wchar_t[size]);
    for (size_t i = 0; i < size; ++i)
        text.m_Data[i] = CharOf(data[i]);
    text.m_Length = int32_t(size);
    return text;
}

// A view a scanner gave must lie inside the text it was cut from.
void Inside(const CREFString& view, const Text& text)
{
    if (view.m_Length == 0)
        return;
    if (view.m_Length < 0 || view.m_Buffer < text.m_Data.get() ||
        view.m_Buffer + view.m_Length > text.m_Data.get() + text.m_Length)
        std::abort();
}

void Progressed(const CREFString& before, const CREFString& after)
{
    if (after.m_Length >= before.m_Length && after.m_Length > 0)
        std::abort();
}

void LineLoops(const Text& text, wchar_t separator, bool flag)
{
    CREFString view = text.View();
    for (int32_t result = S_OK; result == S_OK;) {
        CREFString before = view, line;
        result = view.GetLine(&line, true, separator, flag);
        Inside(line, text);
        if (result == S_OK)
            Progressed(before, view);
    }
    view = text.View();
    for (int32_t result = S_OK; result == S_OK;) {
        CREFString before = view, line;
        result = view.GetLineCRLF(&line, flag, true);
        Inside(line, text);
        if (result == S_OK)
            Progressed(before, view);
    }
    // Taking from the right consumes only when the separator is skipped.
    view = text.View();
    for (int32_t result = S_OK; result == S_OK;) {
        CREFString before = view, head;
        result = view.GetReverseLine(&head, separator, true, true);
        Inside(head, text);
        if (result == S_OK)
            Progressed(before, view);
    }
    view = text.View();
    for (int32_t result = S_OK; result == S_OK;) {
        CREFString before = view, tail;
        result = view.GetLineRight(&tail, separator, true, true, flag);
        Inside(tail, text);
        if (result == S_OK)
            Progressed(before, view);
    }
    view = text.View();
    for (int32_t result = S_OK; result == S_OK;) {
        CREFString before = view, tail;
        result = view.Crop(&tail, separator, true, true);
        Inside(tail, text);
        if (result == S_OK)
            Progressed(before, view);
    }
    CREFString once = text.View(), out;
    once.GetLineRight(&out, separator, true, false, !flag);
    Inside(out, text);
    once = text.View();
    once.GetReverseLine(&out, separator, true, false);
    Inside(out, text);
}

void WordLoops(const Text& text, const CREFString& delimiters, bool withOut)
{
    // The tokeniser: a failure is skipped by one character, as readers do.
    CREFString view = text.View();
    while (!view.IsEmpty()) {
        CREFString before = view, token;
        if (view.GetFirstWord(withOut ? &token : nullptr, true) < 0) {
            ++view.m_Buffer;
            --view.m_Length;
        }
        Inside(token, text);
        Progressed(before, view);
    }
    // GetWord stops in front of the delimiter, which the reader then skips.
    view = text.View();
    while (!view.IsEmpty()) {
        CREFString before = view, word;
        if (view.GetWord(&word, true, delimiters) > 0) {
            ++view.m_Buffer;
            --view.m_Length;
        }
        Inside(word, text);
        Progressed(before, view);
    }
    // Split does not move its receiver; walk on its right part.
    view = text.View();
    while (!view.IsEmpty()) {
        CREFString before = view, left, right;
        if (view.Split(&left, &right, delimiters, withOut ? 1 : 0) < 0)
            break;
        Inside(left, text);
        Inside(right, text);
        view = right;
        ++view.m_Buffer;
        --view.m_Length;
        Progressed(before, view);
    }
}

void Searches(const Text& text, const CREFString& part, bool flag)
{
    CREFString view = text.View();
    int32_t found = view.Contains(part);
    if (found >= 0 && found > view.m_Length)
        std::abort();
    found = view.ContainsChar(part);
    if (found >= view.m_Length)
        std::abort();
    view.CompareI(part, short(flag));
    CREFString(part).CompareI(view, short(!flag));
    CREFString trimmed = text.View();
    int32_t removed = trimmed.TrimLeft(flag);
    if (removed < 0 || removed > text.m_Length)
        std::abort();
}

void Numbers(const CREFString& view, int base)
{
    _IS2Integer(view, base);
    _IS2Color(view, base);
    _IS2Double(view);
    short kind = ISNumberKind(view);
    if (kind != VARIANT_NONE && kind != VARIANT_INTEGER && kind != VARIANT_DOUBLE)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    wchar_t separator = CharOf(data[0]);
    uint8_t flags = data[1];
    size_t split = data[2] % 8;
    data += 3;
    size -= 3;
    if (split > size)
        split = size;
    // The first bytes make the delimiters, needle or other string; the rest the text.
    Text part = MakeText(data, split);
    Text text = MakeText(data + split, size - split);
    LineLoops(text, separator, flags & 1);
    WordLoops(text, part.View(), flags & 2);
    Searches(text, part.View(), flags & 4);
    Numbers(text.View(), int(flags >> 3) % 20);
    return 0;
}
