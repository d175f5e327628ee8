#include "framework/CollectionsEx/RegistryFile.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <mutex>

#include "runtime/SmartPtr.h"
#include "runtime/ValueConversion.h"

namespace {

// What tells one state of the file from another.
struct FileState {
    std::string m_Name;
    bool m_Exists = false;
    dev_t m_Device = 0;
    ino_t m_Inode = 0;
    off_t m_Size = 0;
    timespec m_Modified{};
    timespec m_Changed{};

    bool operator==(const FileState& other) const
    {
        return m_Name == other.m_Name && m_Exists == other.m_Exists && m_Device == other.m_Device &&
               m_Inode == other.m_Inode && m_Size == other.m_Size && m_Modified.tv_sec == other.m_Modified.tv_sec &&
               m_Modified.tv_nsec == other.m_Modified.tv_nsec && m_Changed.tv_sec == other.m_Changed.tv_sec &&
               m_Changed.tv_nsec == other.m_Changed.tv_nsec;
    }
};

FileState StateOf(const std::string& name)
{
    FileState state;
    state.m_Name = name;
    struct stat info;
    if (stat(name.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return state;
    state.m_Exists = true;
    state.m_Device = info.st_dev;
    state.m_Inode = info.st_ino;
    state.m_Size = info.st_size;
    state.m_Modified = info.st_mtim;
    state.m_Changed = info.st_ctim;
    return state;
}

// File times move in clock ticks: two writes within one tick may leave the same
// state behind. A file written in the last two seconds is therefore read anyway.
bool RecentlyWritten(const FileState& state)
{
    return state.m_Exists && std::time(nullptr) - state.m_Changed.tv_sec < 2;
}

std::shared_ptr<const INIDocument> Read(const FileState& state)
{
    auto document = std::make_shared<INIDocument>();
    // A missing file is read as nothing, without the loader's message.
    if (!state.m_Exists || state.m_Size == 0)
        return document;
    auto name = SmartPtr<IString>::Adopt(ISCreate(state.m_Name.c_str(), int(state.m_Name.size())));
    if (INILoadFile(CREFString(name.get()), document.get()) < 0)
        document->clear();
    return document;
}

} // namespace

std::string RegistryFileName()
{
    const char* named = std::getenv("VX_REGISTRY");
    if (named && *named)
        return named;
    // This module is ./_binlinux/CollectionsEx.so or the like: two folders up.
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&RegistryFileName), &info) && info.dli_fname) {
        std::string module = info.dli_fname;
        size_t slash = module.rfind('/');
        if (slash != std::string::npos) {
            std::string folder = module.substr(0, slash);
            size_t parent = folder.rfind('/');
            if (parent != std::string::npos)
                return folder.substr(0, parent + 1) + "registry.ini";
            return "registry.ini";
        }
    }
    return "registry.ini";
}

std::shared_ptr<const INIDocument> RegistryDocument()
{
    static std::mutex gGuard;
    static FileState gState;
    static std::shared_ptr<const INIDocument> gDocument;

    FileState state = StateOf(RegistryFileName());
    {
        std::lock_guard<std::mutex> lock(gGuard);
        if (gDocument && state == gState && !RecentlyWritten(state))
            return gDocument;
    }
    // Read outside the lock: a slow disk holds up no other reader.
    std::shared_ptr<const INIDocument> document = Read(state);
    std::lock_guard<std::mutex> lock(gGuard);
    gState = state;
    gDocument = document;
    return document;
}
