#include "persistence/FileBuffer.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "persistence/FileNameUTF8.h"
#include "persistence/FileReplacement.h"
#include "persistence/LargeBuffer.h"
#include "persistence/TextDecode.h"
#include "persistence/TextDetect.h"

namespace {

// Spare bytes behind the file's content, all zero, so that the tests near its end
// never see stale memory.
constexpr size_t kSpareBytes = 10;

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};
using FilePointer = std::unique_ptr<FILE, FileCloser>;

// The size of an open file; false for anything but a regular file, whose size
// would mean nothing (a folder opens, but can't be read).
bool FileSize(FILE* file, size_t* size)
{
    struct stat status;
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    if (std::fseek(file, 0, SEEK_END) != 0)
        return false;
    long end = std::ftell(file);
    if (end < 0 || std::fseek(file, 0, SEEK_SET) != 0)
        return false;
    *size = size_t(end);
    return true;
}

// How many bytes to read: the whole file, or no more than maxBytes. A negative
// limit leaves nothing to read.
size_t BytesToRead(size_t fileSize, int maxBytes)
{
    if (maxBytes == 0)
        return fileSize;
    if (maxBytes < 0)
        return 0;
    return fileSize < size_t(maxBytes) ? fileSize : size_t(maxBytes);
}

wchar_t* DecodeText(const unsigned char* bytes, size_t count, short mode, unsigned long* size, int32_t* result)
{
    switch (TextDetectForm(bytes, count, mode)) {
    case TextForm::Wide16:
        *result = S_OK;
        return TextDecode16Bit(bytes, count, size);
    case TextForm::Bytes:
        *result = S_OK;
        return TextDecodeBytes(bytes, count, size);
    case TextForm::UTF8:
        break;
    }
    // S_FALSE tells callers that write the text back that it came as UTF-8.
    *result = S_FALSE;
    return TextDecodeUTF8(bytes, count, size);
}

} // namespace

int32_t FileArchiveLoad(tagREFString name, void** data, unsigned long* size, short mode, int maxBytes)
{
    char path[kFileNameBytes];
    FileNameToUTF8(name, path);
    FilePointer file(std::fopen(path, "rb"));
    if (!file) {
        std::fprintf(stderr, "file open err:\n%s\n", path);
        return E_FAIL;
    }
    size_t fileSize = 0;
    if (!FileSize(file.get(), &fileSize))
        return E_FAIL;
    // One buffer for the whole file, even when fewer bytes are wanted.
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[fileSize + kSpareBytes]);
    size_t wanted = BytesToRead(fileSize, maxBytes);
    // Only the part that is read: a small limit on a large file leaves the rest alone.
    LargeBufferAdvise(bytes.get(), wanted);
    size_t count = wanted > 0 ? std::fread(bytes.get(), 1, wanted, file.get()) : 0;
    if (count == 0 || count > wanted)
        return E_FAIL;
    std::memset(bytes.get() + count, 0, fileSize + kSpareBytes - count);
    file.reset();

    // Negative modes have always meant plain text.
    if (mode < 0)
        mode = FILELOAD_TEXT;
    if (mode == FILELOAD_RAW) {
        *data = bytes.release();
        *size = count;
        return S_OK;
    }
    int32_t result = S_OK;
    *data = DecodeText(bytes.get(), count, mode, size, &result);
    return result;
}

namespace {

// Writes the buffer to an open file: bytes as they are, or 32-bit characters as
// 16-bit units; the count of bytes written.
size_t WriteBuffer(FILE* file, const unsigned char* data, unsigned long size, short wide, short append)
{
    if (!wide)
        return size > 0 ? std::fwrite(data, 1, size, file) : 0;
    // A new file starts with the mark; an appended part continues the old text.
    if (!append) {
        static const unsigned char kMark[2] = {0xFF, 0xFE};
        std::fwrite(kMark, 1, sizeof kMark, file);
    }
    // Each character is cut to its low 16 bits: no surrogate pairs are made.
    size_t characters = size / 4;
    std::unique_ptr<unsigned char[]> units(new unsigned char[2 * characters + 1]);
    for (size_t k = 0; k < characters; ++k) {
        uint32_t c;
        std::memcpy(&c, data + 4 * k, sizeof c);
        units[2 * k] = static_cast<unsigned char>(c & 0xFF);
        units[2 * k + 1] = static_cast<unsigned char>((c >> 8) & 0xFF);
    }
    return characters > 0 ? std::fwrite(units.get(), 1, 2 * characters, file) : 0;
}

} // namespace

int32_t FileArchiveSave(tagREFString name, unsigned char* data, unsigned long size, short wide, short append)
{
    char path[kFileNameBytes];
    FileNameToUTF8(name, path);
    if (!data)
        size = 0;
    if (append) {
        FilePointer file(std::fopen(path, "ab"));
        if (!file)
            return E_FAIL;
        return WriteBuffer(file.get(), data, size, wide, append) > 0 ? S_OK : E_FAIL;
    }
    // A whole file: written beside the old one, which it replaces only when complete.
    CFileReplacement replacement(path);
    if (!replacement.File())
        return E_FAIL;
    size_t written = WriteBuffer(replacement.File(), data, size, wide, append);
    if (!replacement.Commit())
        return E_FAIL;
    return written > 0 ? S_OK : E_FAIL;
}
