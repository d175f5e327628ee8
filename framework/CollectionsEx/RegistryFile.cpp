#include "framework/CollectionsEx/RegistryFile.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cstdlib>
#include <ctime>
#include <map>
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

namespace {

// The folder that holds _binlinux, with its "/", or "" when it can't be told. This
// module is ./_binlinux/CollectionsEx.so or the like: two folders up. The module
// does not move while it is loaded, so the answer is found once.
const std::string& ModulesParentFolder()
{
    static const std::string gFolder = [] {
        Dl_info info;
        if (!dladdr(reinterpret_cast<void*>(&FileBesideModules), &info) || !info.dli_fname)
            return std::string();
        std::string module = info.dli_fname;
        size_t slash = module.rfind('/');
        if (slash == std::string::npos)
            return std::string();
        std::string folder = module.substr(0, slash);
        size_t parent = folder.rfind('/');
        return parent != std::string::npos ? folder.substr(0, parent + 1) : std::string();
    }();
    return gFolder;
}

} // namespace

std::string FileBesideModules(const char* variable, const char* fileName)
{
    const char* named = std::getenv(variable);
    if (named && *named)
        return named;
    return ModulesParentFolder() + fileName;
}

std::string RegistryFileName() { return FileBesideModules("VX_REGISTRY", "registry.ini"); }

std::shared_ptr<const INIDocument> CachedINIDocument(const std::string& fileName)
{
    struct Cached {
        FileState m_State;
        std::shared_ptr<const INIDocument> m_Document;
    };
    static std::mutex gGuard;
    // One record for each file name the process has asked for: a handful.
    static std::map<std::string, Cached> gFiles;

    FileState state = StateOf(fileName);
    {
        std::lock_guard<std::mutex> lock(gGuard);
        auto found = gFiles.find(fileName);
        if (found != gFiles.end() && found->second.m_Document && state == found->second.m_State &&
            !RecentlyWritten(state))
            return found->second.m_Document;
    }
    // Read outside the lock: a slow disk holds up no other reader.
    std::shared_ptr<const INIDocument> document = Read(state);
    std::lock_guard<std::mutex> lock(gGuard);
    gFiles[fileName] = Cached{state, document};
    return document;
}

std::shared_ptr<const INIDocument> RegistryDocument() { return CachedINIDocument(RegistryFileName()); }
