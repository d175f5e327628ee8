// Views of wide text: a length and a pointer, owning nothing. All song, Bible,
// configuration and path text is cut up in place through these.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cwchar>

struct IUnknown;
struct IString;
struct ICreatableString;
struct IVariant;
struct ISuperCollection;

struct tagREFString {
    int32_t m_Length;
    wchar_t* m_Buffer;
};

// A view of a string literal; the literal outlives every use.
template <size_t N> constexpr tagREFString REFLiteral(const wchar_t (&text)[N])
{
    return tagREFString{int32_t(N - 1), const_cast<wchar_t*>(text)};
}

class CREFString : public tagREFString {
public:
    CREFString() : tagREFString{0, nullptr} {}
    CREFString(const tagREFString& view) : tagREFString(view) {}
    CREFString(const wchar_t* buffer, int32_t length) : tagREFString{length, const_cast<wchar_t*>(buffer)} {}
    CREFString(const wchar_t* text)
        : tagREFString{text ? int32_t(std::wcslen(text)) : 0, const_cast<wchar_t*>(text)}
    {
    }
    // Any object: takes the text of its IString face, if it has one. The view is
    // valid only while the caller keeps the object alive.
    explicit CREFString(IUnknown* object);
    // A string's own text, without asking for the face it already is.
    explicit CREFString(IString* string);

    CREFString(const CREFString&) = default;
    CREFString& operator=(const CREFString&) = default;

    virtual int32_t GetLine(CREFString* out, bool advance, wchar_t separator, bool strip);
    virtual int32_t GetLineCRLF(CREFString* out, bool strip, bool advance);
    virtual int32_t GetReverseLine(CREFString* out, wchar_t separator, bool advance, bool skip);
    virtual int32_t GetLineRight(CREFString* out, wchar_t separator, bool advance, bool skip, bool wholeIfNone);
    virtual int32_t Crop(CREFString* out, wchar_t separator, bool advance, bool skip);
    virtual int32_t Split(CREFString* left, CREFString* right, CREFString delimiters, int stopAtControl);
    virtual int32_t GetFirstWord(CREFString* out, bool advance);
    virtual int32_t GetWord(CREFString* out, bool advance, tagREFString delimiters);
    virtual int32_t Contains(tagREFString needle);
    virtual int32_t ContainsChar(tagREFString set);

    int32_t TrimLeft(bool punctuation);
    int32_t CompareI(tagREFString other, short prefix);

    // Cached factories of the lowest layer; they work before any collection exists.
    static ICreatableString* CreateString();
    static IVariant* CreateVariant();
    static ISuperCollection* CreateCollection();

    // The character at an index; the place behind the view (or before it) reads as 0.
    wchar_t At(int32_t index) const
    {
        return (index >= 0 && index < m_Length && m_Buffer) ? m_Buffer[index] : L'\0';
    }
    bool IsEmpty() const { return m_Length < 1; }
};
