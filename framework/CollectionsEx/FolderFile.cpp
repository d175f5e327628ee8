#include "framework/CollectionsEx/FolderFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>

#include "persistence/LargeBuffer.h"
#include "runtime/Result.h"

namespace {

// A name beside the target that no other save picks: the process and a counter.
std::string TemporaryName(const std::string& path)
{
    static std::atomic<unsigned> counter{0};
    size_t slash = path.rfind('/');
    std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    char name[64];
    std::snprintf(name, sizeof(name), ".vxsave-%ld-%u", long(getpid()), counter.fetch_add(1));
    return folder + name;
}

bool WriteAll(int fd, const unsigned char* bytes, size_t size)
{
    while (size > 0) {
        ssize_t written = write(fd, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        size -= size_t(written);
    }
    return true;
}

} // namespace

int32_t ReadWholeFile(const std::string& path, size_t limit, std::vector<unsigned char>* bytes)
{
    bytes->clear();
    int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return E_FAIL;
    struct stat info;
    bool good = fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size >= 0 && size_t(info.st_size) <= limit;
    if (good) {
        bytes->reserve(size_t(info.st_size));
        LargeBufferAdvise(bytes->data(), bytes->capacity());
        bytes->resize(size_t(info.st_size));
    }
    size_t have = 0;
    while (good && have < bytes->size()) {
        ssize_t got = read(fd, bytes->data() + have, bytes->size() - have);
        if (got < 0 && errno == EINTR)
            continue;
        good = got > 0;
        if (good)
            have += size_t(got);
    }
    close(fd);
    if (!good)
        bytes->clear();
    return good ? S_OK : E_FAIL;
}

int32_t ReplaceFile(const std::string& path, const unsigned char* bytes, size_t size)
{
    if (path.empty())
        return E_FAIL;
    std::string temporary;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temporary = TemporaryName(path);
        fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            return E_FAIL;
    }
    if (fd < 0)
        return E_FAIL;
    struct stat old;
    if (stat(path.c_str(), &old) == 0 && S_ISREG(old.st_mode))
        fchmod(fd, old.st_mode & 07777);
    bool good = WriteAll(fd, bytes, size) && fsync(fd) == 0;
    good = close(fd) == 0 && good;
    good = good && rename(temporary.c_str(), path.c_str()) == 0;
    if (!good)
        unlink(temporary.c_str());
    return good ? S_OK : E_FAIL;
}
