#include "host/HostTranslation.h"

#include <filesystem>
#include <system_error>

#include "runtime/ValueConversion.h"

namespace fs = std::filesystem;

SmartPtr<IString> HostWide(const std::string& text)
{
    return SmartPtr<IString>::Adopt(ISCreate(text.c_str(), int(text.size())));
}

bool HostRefuseExisting(const std::string& out, bool force)
{
    std::error_code error;
    if (force || !fs::exists(fs::symlink_status(out, error)))
        return false;
    HostFail(out + ": exists already; add --force to replace it");
    return true;
}
