// Points the registry at a file for the length of a test: VX_REGISTRY names the file,
// and names again what it named before once the object goes.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <string>

namespace vxtest {

class ScopedRegistry {
public:
    explicit ScopedRegistry(const std::filesystem::path& file)
    {
        const char* before = std::getenv("VX_REGISTRY");
        m_Had = before != nullptr;
        m_Before = before ? before : "";
        setenv("VX_REGISTRY", file.c_str(), 1);
    }
    ~ScopedRegistry()
    {
        if (m_Had)
            setenv("VX_REGISTRY", m_Before.c_str(), 1);
        else
            unsetenv("VX_REGISTRY");
    }
    ScopedRegistry(const ScopedRegistry&) = delete;
    ScopedRegistry& operator=(const ScopedRegistry&) = delete;

private:
    bool m_Had = false;
    std::string m_Before;
};

} // namespace vxtest
