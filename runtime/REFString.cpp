// The scanners of text views. Their results carry meaning beyond success and
// failure, and the song and Bible parsers rely on their edges: change none of
// them for a "cleaner" rule. No scanner reads outside its view; the place behind
// a view reads as 0.
#include "runtime/REFString.h"

#include <cwctype>

#include "runtime/SmartPtr.h"
#include "runtime/interfaces/Values.h"

namespace {

bool InSet(wchar_t c, const tagREFString& set)
{
    for (int32_t i = 0; i < set.m_Length; ++i)
        if (set.m_Buffer[i] == c)
            return true;
    return false;
}

// Index of the first separator, or -1.
int32_t FindFirst(const tagREFString& view, wchar_t separator)
{
    for (int32_t i = 0; i < view.m_Length; ++i)
        if (view.m_Buffer[i] == separator)
            return i;
    return -1;
}

// Index of the last separator, or -1.
int32_t FindLast(const tagREFString& view, wchar_t separator)
{
    for (int32_t i = view.m_Length - 1; i >= 0; --i)
        if (view.m_Buffer[i] == separator)
            return i;
    return -1;
}

void SetView(CREFString* out, wchar_t* buffer, int32_t length)
{
    if (out) {
        out->m_Buffer = buffer;
        out->m_Length = length;
    }
}

void SetLength(CREFString* out, int32_t length)
{
    if (out)
        out->m_Length = length;
}

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsBreak(wchar_t c) { return c == L'\n' || c == L'\r'; }

} // namespace

// The face is released again at once: the object itself keeps the text alive.
CREFString::CREFString(IUnknown* object) : CREFString(QueryAs<IString>(object).get()) {}

CREFString::CREFString(IString* string) : tagREFString{0, nullptr}
{
    if (!string)
        return;
    int length = 0;
    string->GetBuffer(&m_Buffer, &length);
    m_Length = length;
}

int32_t CREFString::GetLine(CREFString* out, bool advance, wchar_t separator, bool strip)
{
    if (m_Length == 0) {
        SetLength(out, 0);
        return E_FAIL;
    }
    int32_t p = 0;
    if (m_Length > 0) {
        int32_t found = FindFirst(*this, separator);
        p = found < 0 ? m_Length : found + 1;
    }
    if (out) {
        int32_t taken = p;
        if (strip && p != 0 && m_Buffer[p - 1] == separator)
            --taken;
        SetView(out, m_Buffer, taken);
    }
    if (!advance)
        return p < m_Length ? S_OK : E_FAIL;
    m_Buffer += p;
    if (m_Length - p <= 0) {
        m_Length = 0;
        return S_FALSE;
    }
    m_Length -= p;
    return S_OK;
}

int32_t CREFString::GetLineCRLF(CREFString* out, bool strip, bool advance)
{
    if (m_Length == 0) {
        SetLength(out, 0);
        return E_FAIL;
    }
    int32_t length = m_Length < 0 ? 0 : m_Length;
    int32_t end = length;
    int32_t consumed = length;
    for (int32_t i = 0; i < length; ++i) {
        if (IsBreak(m_Buffer[i])) {
            end = i;
            break;
        }
    }
    if (end < length) {
        // "\r\n" and "\n\r" are one line end; "\n\n" and "\r\r" are two.
        consumed = end + 1;
        if (end + 1 < length && m_Buffer[end + 1] != m_Buffer[end] && IsBreak(m_Buffer[end + 1]))
            consumed = end + 2;
    }
    SetView(out, m_Buffer, strip ? end : consumed);
    if (!advance)
        return S_OK;
    m_Buffer += consumed;
    if (length - consumed <= 0) {
        m_Length = 0;
        return S_FALSE;
    }
    m_Length = length - consumed;
    return S_OK;
}

int32_t CREFString::GetReverseLine(CREFString* out, wchar_t separator, bool advance, bool skip)
{
    int32_t i = FindLast(*this, separator);
    if (i < 0) {
        SetView(out, m_Buffer, 0);
        return E_FAIL;
    }
    SetView(out, m_Buffer, i);
    if (i == 0)
        return E_FAIL;
    if (advance) {
        int32_t moved = skip ? i + 1 : i;
        m_Buffer += moved;
        m_Length -= moved;
    }
    return S_OK;
}

namespace {

// The tail behind the last separator; the common body of GetLineRight and Crop.
int32_t TakeRight(CREFString& view, CREFString* out, wchar_t separator, bool advance, bool skip, bool wholeIfNone)
{
    int32_t i = FindLast(view, separator);
    if (i < 0) {
        if (!wholeIfNone) {
            SetLength(out, 0);
            return E_FAIL;
        }
        SetView(out, view.m_Buffer, view.m_Length);
        if (advance)
            view.m_Length = 0;
        return S_OK;
    }
    int32_t from = skip ? i + 1 : i;
    SetView(out, view.m_Buffer + from, view.m_Length - from);
    if (advance)
        view.m_Length = skip ? i : i + 1;
    return S_OK;
}

} // namespace

int32_t CREFString::GetLineRight(CREFString* out, wchar_t separator, bool advance, bool skip, bool wholeIfNone)
{
    if (m_Length < 1)
        return E_FAIL;
    return TakeRight(*this, out, separator, advance, skip, wholeIfNone);
}

int32_t CREFString::Crop(CREFString* out, wchar_t separator, bool advance, bool skip)
{
    return TakeRight(*this, out, separator, advance, skip, false);
}

int32_t CREFString::Split(CREFString* left, CREFString* right, CREFString delimiters, int stopAtControl)
{
    if (m_Length < 1) {
        SetView(left, m_Buffer, 0);
        SetLength(right, 0);
        return E_FAIL;
    }
    // The control test applies only when there is at least one delimiter.
    bool control = stopAtControl != 0 && delimiters.m_Length > 0;
    for (int32_t i = 0; i < m_Length; ++i) {
        wchar_t c = m_Buffer[i];
        if (InSet(c, delimiters) || (control && c < 32)) {
            SetView(left, m_Buffer, i);
            SetView(right, m_Buffer + i, m_Length - i);
            return S_OK;
        }
    }
    SetView(left, m_Buffer, m_Length);
    SetLength(right, 0);
    return E_FAIL;
}

int32_t CREFString::GetFirstWord(CREFString* out, bool advance)
{
    if (m_Length < 1) {
        SetLength(out, 0);
        return E_FAIL;
    }
    wchar_t c = m_Buffer[0];
    int32_t n = 0;
    if (c == L'"') {
        if (m_Length < 2 || At(1) == L'"') {
            n = 1;
        } else {
            n = m_Length;
            for (int32_t i = 2; i < m_Length; ++i) {
                if (m_Buffer[i] == L'"') {
                    n = i;
                    break;
                }
            }
        }
    } else if ((c == L'-' && IsDigit(At(1))) || IsDigit(c)) {
        n = c == L'-' ? 1 : 0;
        while (IsDigit(At(n)))
            ++n;
        if (n < m_Length && At(n) == L'.' && IsDigit(At(n + 1))) {
            ++n;
            while (n < m_Length && IsDigit(At(n)))
                ++n;
            // An exponent counts only after a fraction, and only with a sign.
            if ((At(n) == L'e' || At(n) == L'E') && n < m_Length - 1 && (At(n + 1) == L'+' || At(n + 1) == L'-') &&
                IsDigit(At(n + 2))) {
                n += 2;
                while (n < m_Length && IsDigit(At(n)))
                    ++n;
            }
        }
    } else if (std::iswpunct(wint_t(c)) && c != L'-') {
        n = 1;
    } else {
        while (n < m_Length) {
            wchar_t d = m_Buffer[n];
            if (d != L'_' && (std::iswspace(wint_t(d)) || std::iswpunct(wint_t(d))))
                break;
            ++n;
        }
        if (n == 0)
            return E_FAIL;
    }
    if (out) {
        SetView(out, m_Buffer, n);
        // A closing quote takes the opening character off and is consumed with it.
        if (At(n) == L'"') {
            SetView(out, m_Buffer + 1, n - 1);
            ++n;
        }
    }
    if (advance) {
        m_Buffer += n;
        m_Length -= n;
    }
    return S_OK;
}

int32_t CREFString::GetWord(CREFString* out, bool advance, tagREFString delimiters)
{
    if (m_Length < 1) {
        SetLength(out, 0);
        return E_FAIL;
    }
    int32_t i = 0;
    while (i < m_Length && !InSet(m_Buffer[i], delimiters))
        ++i;
    SetView(out, m_Buffer, i);
    bool found = i < m_Length;
    if (advance) {
        m_Buffer += i;
        m_Length -= i;
    }
    return found ? i + 1 : 0;
}

int32_t CREFString::Contains(tagREFString needle)
{
    if (needle.m_Length < 1 || m_Length < 1)
        return E_FAIL;
    CREFString pattern(needle);
    int32_t j = 0;
    int32_t p = 0;
    // One pass, never going back: "aab" doesn't contain "ab", and a match at index
    // 0 reports 1 for needles of two characters or more.
    for (int32_t i = 0; i < m_Length; ++i) {
        if (m_Buffer[i] == pattern.At(j)) {
            ++j;
            if (p == 0)
                p = i;
        } else {
            if (j == needle.m_Length)
                return p;
            j = 0;
            p = 0;
        }
    }
    return j == needle.m_Length ? p : E_FAIL;
}

int32_t CREFString::ContainsChar(tagREFString set)
{
    if (set.m_Length < 1 || m_Length < 1)
        return E_FAIL;
    for (int32_t i = 0; i < m_Length; ++i)
        if (InSet(m_Buffer[i], set))
            return i;
    return E_FAIL;
}

int32_t CREFString::TrimLeft(bool punctuation)
{
    if (m_Length < 1)
        return 0;
    int32_t removed = 0;
    while (m_Length > 0) {
        wint_t c = wint_t(m_Buffer[0]);
        bool drop = punctuation ? (std::iswspace(c) || std::iswpunct(c) || std::iswcntrl(c))
                                : (std::iswspace(c) || std::iswcntrl(c) || m_Buffer[0] == 254 || m_Buffer[0] == 239);
        if (!drop)
            break;
        ++m_Buffer;
        --m_Length;
        ++removed;
    }
    return removed;
}

int32_t CREFString::CompareI(tagREFString other, short prefix)
{
    if (prefix != 0 && m_Length < other.m_Length)
        return E_FAIL;
    int32_t n = (prefix != 0 || m_Length > other.m_Length) ? other.m_Length : m_Length;
    if (n <= 0 || m_Length < 1)
        return E_FAIL;
    for (int32_t i = 0; i < n; ++i)
        if (std::towlower(wint_t(m_Buffer[i])) != std::towlower(wint_t(other.m_Buffer[i])))
            return E_FAIL;
    return m_Length == other.m_Length ? S_OK : S_FALSE;
}
