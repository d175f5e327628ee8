// Parameters read from any XML text: the first byte picks the load mode and whether
// the plain or the objects-only form reads it; the rest is the text, widened byte
// by byte. What was read is written again in every form.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ParamsFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0 || size > 64 * 1024)
        return 0;
    std::vector<wchar_t> text(data + 1, data + size);
    auto stream = FuzzMake<IDataStream>(REFLiteral(L"XMLStream"));
    stream->SetBuffer(text.data(), int(text.size() * sizeof(wchar_t)), 0);
    auto parameters = FuzzParameters();
    int mode = FuzzParamsMode(data[0]);
    if (data[0] & 0x80)
        parameters->Params_LoadXMLUnk(stream, mode);
    else
        parameters->Params_LoadXML(stream, mode, 0);
    FuzzSaveEveryForm(parameters);
    return 0;
}
