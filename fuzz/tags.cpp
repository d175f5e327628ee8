// Both tag scanners over any text, in the loops their callers run: every element,
// then every attribute of it. Views sit in buffers of their exact size, so a read
// behind a view shows.
#include <cstdint>
#include <cstring>
#include <memory>

#include "persistence/TagScan.h"

namespace {

void Check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

bool Inside(const CREFString& view, const wchar_t* begin, const wchar_t* end)
{
    return view.m_Length >= 0 && view.m_Buffer >= begin && view.m_Buffer + view.m_Length <= end;
}

void WalkAttributes(CREFString attributes, const wchar_t* begin, const wchar_t* end)
{
    CREFString name;
    CREFString value;
    for (;;) {
        int32_t before = attributes.m_Length;
        int32_t result = XMLGetNextTAGAttribute(attributes, name, value);
        Check(Inside(attributes, begin, end) && Inside(name, begin, end) && Inside(value, begin, end));
        if (result < 0)
            break;
        // Each attribute taken must shorten the rest, or the callers' loops never end.
        Check(attributes.m_Length < before);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count)
{
    if (count < 1)
        return 0;
    // The first byte is the tag's length; the rest widens byte by byte, with a few
    // high values mixed in so that odd characters turn up.
    size_t tagLength = bytes[0] % 12;
    size_t length = count - 1;
    std::unique_ptr<wchar_t[]> wide(new wchar_t[length > 0 ? length : 1]);
    for (size_t k = 0; k < length; ++k) {
        uint8_t b = bytes[k + 1];
        wide[k] = b >= 0xF8 ? wchar_t(0xFEFF + (b - 0xF8) * 0x10000) : wchar_t(b);
    }
    if (tagLength > length)
        tagLength = length;
    std::unique_ptr<wchar_t[]> tagBuffer(new wchar_t[tagLength > 0 ? tagLength : 1]);
    std::memcpy(tagBuffer.get(), wide.get(), tagLength * sizeof(wchar_t));
    const wchar_t* begin = wide.get() + tagLength;
    const wchar_t* end = wide.get() + length;

    CREFString tag(tagBuffer.get(), int32_t(tagLength));
    CREFString text(begin, int32_t(end - begin));
    CREFString attributes;
    CREFString content;
    for (;;) {
        int32_t before = text.m_Length;
        int32_t result = XMLGetTAGGED(text, tag, attributes, content, 1);
        Check(Inside(text, begin, end) && Inside(content, begin, end));
        if (result < 0)
            break;
        Check(Inside(attributes, begin, end));
        Check(text.m_Length < before);
        WalkAttributes(attributes, begin, end);
        // Elements of another name inside the content, as the song reader looks for them.
        CREFString inner = content;
        CREFString any(L"v");
        CREFString innerAttributes;
        CREFString innerContent;
        while (XMLGetTAGGED(inner, any, innerAttributes, innerContent, 1) >= 0)
            Check(Inside(inner, begin, end) && Inside(innerContent, begin, end));
    }
    // Without advancing, the text stays as it was.
    CREFString still(begin, int32_t(end - begin));
    XMLGetTAGGED(still, tag, attributes, content, 0);
    Check(still.m_Buffer == begin && still.m_Length == int32_t(end - begin));
    return 0;
}
