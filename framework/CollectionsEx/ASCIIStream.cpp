#include "framework/CollectionsEx/ASCIIStream.h"

#include <climits>

#include "framework/CollectionsEx/WideUTF8.h"

int32_t CASCIIStream::Transform(IUnknown* in, IUnknown* out, int /*mode*/)
{
    auto source = QueryAs<IDataStream>(in);
    auto target = QueryAs<IDataStream>(out);
    if (!source || !target)
        return E_INVALIDARG;
    void* data = nullptr;
    unsigned long size = 0;
    int32_t result = source->GetBuffer(&data, &size);
    if (result < 0)
        return result;
    const wchar_t* text = static_cast<const wchar_t*>(data);
    size_t length = text ? size / sizeof(wchar_t) : 0;
    // A terminator counted into the size doesn't belong in the bytes.
    for (size_t i = 0; i < length; ++i) {
        if (text[i] == L'\0') {
            length = i;
            break;
        }
    }
    std::string bytes = WideToUTF8(text, length);
    if (bytes.empty())
        return S_OK;
    if (bytes.size() > size_t(INT_MAX))
        return E_FAIL;
    return target->Write(bytes.data(), int(bytes.size()), 0);
}
