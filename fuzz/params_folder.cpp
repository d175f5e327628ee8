// Parameters read from any bytes taken as a folder stream's archive: the first byte
// picks the load mode. What was read is written again in every form.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ParamsFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0 || size > 256 * 1024)
        return 0;
    std::vector<uint8_t> bytes(data + 1, data + size);
    auto stream = FuzzMake<IDataStream>(REFLiteral(L"FolderStream"));
    if (stream->SetBuffer(bytes.data(), int(bytes.size()), 0) < 0)
        return 0;
    auto parameters = FuzzParameters();
    parameters->Params_LoadFolderStream(stream, FuzzParamsMode(data[0]));
    FuzzSaveEveryForm(parameters);
    return 0;
}
