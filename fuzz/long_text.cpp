// Any bytes as the long Bible text of the conversion step: converted into a folder
// that is emptied before every run. Whatever the text, the list of books is
// written, and no file lands outside the folder.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

namespace fs = std::filesystem;

namespace {

const fs::path gRoot = fs::path(fs::exists("/dev/shm") ? "/dev/shm" : "/tmp") /
                       ("vx-fuzz-long-text-" + std::to_string(getpid()));
const fs::path gInput = gRoot / "in.txt";
const fs::path gOutput = gRoot / "out";

SmartPtr<IVariant> TextVariant(const std::string& text)
{
    auto variant = SmartPtr<IVariant>::Adopt(CREFString::CreateVariant());
    variant->put_String(SmartPtr<IString>::Adopt(ISCreate(text.data(), int(text.size()))));
    return variant;
}

void RemoveRoot()
{
    std::error_code error;
    fs::remove_all(gRoot, error);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    std::atexit(RemoveRoot);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > 64 * 1024)
        return 0;
    std::error_code error;
    fs::remove_all(gRoot, error);
    fs::create_directories(gOutput);
    if (FILE* file = std::fopen(gInput.c_str(), "wb")) {
        if (size > 0)
            std::fwrite(data, 1, size, file);
        std::fclose(file);
    }
    IID iid = IParameters::Iid();
    auto step = SmartPtr<IParameters>::Adopt(
        static_cast<IParameters*>(static_cast<void*>(CreateObject(REFLiteral(L"VXSongConvert"), &iid))));
    if (!step)
        __builtin_trap();
    step->put_Item(0, TextVariant(gInput.string()));
    step->put_Item(1, TextVariant(gOutput.string()));
    if (step.As<IStep>()->TurnOn() < 0 || !fs::exists(gOutput / "bible.ini"))
        __builtin_trap();
    // Only the input and the output folder may be there.
    for (const auto& entry : fs::directory_iterator(gRoot))
        if (entry.path() != gInput && entry.path() != gOutput)
            __builtin_trap();
    return 0;
}
