// Any bytes as a file on disk, read in every mode and with limits, then written
// back as wide text and read again.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstdio>
#include <cstring>
#include <string>

#include "persistence/FileBuffer.h"

namespace {

// A file in memory where the system offers one: the run is all file opening.
std::wstring FuzzFileName(const char* suffix)
{
    struct stat status;
    std::string folder = stat("/dev/shm", &status) == 0 && S_ISDIR(status.st_mode) ? "/dev/shm" : "/tmp";
    std::string name = folder + "/vx-fuzz-file-load-" + std::to_string(getpid()) + suffix;
    return std::wstring(name.begin(), name.end());
}

CREFString View(const std::wstring& text) { return CREFString(text.data(), int32_t(text.size())); }

void Check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

// Reads the file once and checks what the result promises about the buffer;
// bytes, when given, are the file's content.
void LoadAndCheck(const std::wstring& name, const uint8_t* bytes, size_t count, short mode, int maxBytes)
{
    void* data = nullptr;
    unsigned long size = 0;
    int32_t result = FileArchiveLoad(View(name), &data, &size, mode, maxBytes);
    size_t seen = maxBytes > 0 && size_t(maxBytes) < count ? size_t(maxBytes) : count;
    if (result < 0) {
        Check(data == nullptr && (seen == 0 || maxBytes < 0));
        return;
    }
    if (mode == FILELOAD_RAW) {
        Check(size == seen && (!bytes || std::memcmp(data, bytes, seen) == 0));
        delete[] static_cast<unsigned char*>(data);
        return;
    }
    auto* text = static_cast<wchar_t*>(data);
    // Every element and the terminator are read, so a short buffer shows.
    wchar_t sum = 0;
    for (unsigned long k = 0; k < size; ++k)
        sum = wchar_t(sum ^ text[k]);
    if (size > 0 && text[size - 1] != 0)
        Check(text[size] == 0);
    Check(size <= seen);
    (void)sum;
    delete[] text;
}

const std::wstring gName = FuzzFileName(".txt");
const std::wstring gSaved = FuzzFileName("-saved.txt");

void RemoveFuzzFiles()
{
    std::remove(std::string(gName.begin(), gName.end()).c_str());
    std::remove(std::string(gSaved.begin(), gSaved.end()).c_str());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    std::atexit(RemoveFuzzFiles);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count)
{
    const std::wstring& name = gName;
    const std::wstring& saved = gSaved;
    FILE* file = std::fopen(std::string(name.begin(), name.end()).c_str(), "wb");
    if (!file)
        return 0;
    if (count > 0)
        std::fwrite(bytes, 1, count, file);
    std::fclose(file);

    int limit = count > 0 ? int(bytes[0] % 16) : 0;
    for (short mode : {short(FILELOAD_RAW), short(FILELOAD_TEXT), short(FILELOAD_TEXTCHECK), short(-1), short(9)}) {
        LoadAndCheck(name, bytes, count, mode, 0);
        LoadAndCheck(name, bytes, count, mode, limit);
    }
    LoadAndCheck(name, bytes, count, FILELOAD_RAW, -3);

    // The same bytes taken as 32-bit characters, saved wide, read back through the mark.
    if (FileArchiveSave(View(saved), const_cast<uint8_t*>(bytes), count, 1, 0) >= 0) {
        Check(count >= 4);
        FileArchiveSave(View(saved), const_cast<uint8_t*>(bytes), count, 1, 1);
        LoadAndCheck(saved, nullptr, 2 + 4 * (count / 4), FILELOAD_TEXT, 0);
        LoadAndCheck(saved, nullptr, 2 + 4 * (count / 4), FILELOAD_RAW, 0);
    }
    return 0;
}
