// Any text given to an "XMLStream": the bytes widened one by one, and the same
// bytes read as UTF-8, each walked with the reader's operations in the ways its
// callers use them, with a bound on the steps.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "runtime/Module.h"
#include "runtime/UTF8Lenient.h"
#include "runtime/VXCore.h"

namespace {

// Walks a stream's children and, a few levels down, their children. The first
// byte of the input picks the order of the operations.
void Walk(IXMLStream* stream, unsigned choice, int depth, int* budget)
{
    tagREFString name{0, nullptr};
    while (--*budget > 0 && stream->NextAttribute(&name) >= 0) {
        volatile wchar_t probe = name.m_Length > 0 ? name.m_Buffer[name.m_Length - 1] : 0;
        (void)probe;
        switch ((choice + unsigned(*budget)) % 4) {
        case 0:
            stream->Skip(name.m_Length * 4, 1, 0);
            continue;
        case 1:
            stream->ResetAttributes(0, 0, 0);
            break;
        default:
            break;
        }
        tagREFString value{0, nullptr};
        SmartPtr<IUnknown> element;
        if (stream->GetAttribute(name, &value, element.Receive(), 1) < 0) {
            stream->Skip(0, 1, 0);
            continue;
        }
        if (value.m_Length > 0)
            probe = value.m_Buffer[0] ^ value.m_Buffer[value.m_Length - 1];
        CREFString text(element.get());
        if (text.m_Length > 0)
            probe = text.m_Buffer[text.m_Length - 1];
        auto sub = element.As<IXMLStream>();
        if (sub && depth < 6)
            Walk(sub, choice / 4, depth + 1, budget);
    }
    stream->ResetAttributes(0, 0, 0);
    stream->GetAttribute(REFLiteral(L"body"), nullptr, nullptr, 1);
}

void Read(std::vector<wchar_t>& text, unsigned choice)
{
    IID iid = IID_IXMLStream;
    auto stream = SmartPtr<IXMLStream>::Adopt(static_cast<IXMLStream*>(CreateObject(REFLiteral(L"XMLStream"), &iid)));
    if (!stream)
        __builtin_trap();
    stream->SetBuffer(text.data(), int(text.size() * 4), 0);
    // The caller's buffer may go as soon as the stream has it.
    for (wchar_t& c : text)
        c = L'#';
    int budget = 400;
    Walk(stream, choice, 0, &budget);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0 || size > 64 * 1024)
        return 0;
    unsigned choice = data[0];
    std::vector<wchar_t> widened(data, data + size);
    Read(widened, choice);

    std::vector<wchar_t> decoded;
    for (size_t at = 0; at < size;) {
        wchar_t c = 0;
        at += UTF8DecodeLenient(data + at, size - at, &c);
        decoded.push_back(c);
    }
    Read(decoded, choice);
    return 0;
}
