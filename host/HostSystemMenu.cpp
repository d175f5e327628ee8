#include "host/HostSystemMenu.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "host/Host.h"
#include "host/HostTranslation.h"

namespace fs = std::filesystem;

HostSystemMenu::~HostSystemMenu()
{
    if (m_Copy.empty())
        return;
    std::error_code error;
    fs::remove(m_Copy, error);
    if (m_HadBefore)
        ::setenv("VX_REGISTRY", m_Before.c_str(), 1);
    else
        ::unsetenv("VX_REGISTRY");
}

bool HostSystemMenu::On(std::string* error)
{
    const char* named = std::getenv("VX_REGISTRY");
    m_HadBefore = named != nullptr;
    m_Before = named ? named : "";
    // The host runs in the folder that holds _binlinux, where the registry lies unless named.
    std::string source = named && *named ? m_Before : (fs::current_path() / "registry.ini").string();

    auto ini = HostCreate<IFileArchive>(L"INIFile");
    if (!ini) {
        *error = "the INIFile component is not installed";
        return false;
    }
    // A registry that is missing or unreadable is an empty one, with the menu alone in it.
    ini->put_Filename(HostWide(source));
    ini->Load();
    QueryAs<IINIFile>(ini.get())->put_Section(HostWide("UI"));
    auto values = ini.As<IParameters>();
    auto on = HostWide("1");
    int index = -1;
    if (values->get_Index(HostWide("SystemMenu"), &index) >= 0 && index >= 0)
        values->put_Item(index, on);
    else
        ini.As<IParametersCreatable>()->Add(HostWide("SystemMenu"), on, nullptr, 0);

    const char* folder = std::getenv("TMPDIR");
    std::string pattern = std::string(folder && *folder ? folder : "/tmp") + "/vxhost-registry-XXXXXX";
    int descriptor = ::mkstemp(pattern.data());
    if (descriptor < 0) {
        *error = pattern + ": the registry's copy could not be made";
        return false;
    }
    ::close(descriptor);
    m_Copy = pattern;
    ini->put_Filename(HostWide(m_Copy));
    if (ini->Save() < 0) {
        *error = m_Copy + ": the registry's copy could not be written";
        return false;
    }
    ::setenv("VX_REGISTRY", m_Copy.c_str(), 1);
    return true;
}
