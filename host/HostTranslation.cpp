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

SmartPtr<IFileArchive> HostLoadTranslation(const std::string& path)
{
    std::error_code error;
    if (!fs::exists(path, error)) {
        HostFail(path + ": no such file or folder");
        return {};
    }
    auto bible = HostCreate<IFileArchive>(L"VXBible");
    if (!bible) {
        HostFail("the Bible component is not installed");
        return {};
    }
    bible->put_Filename(HostWide(path));
    bible->Load();
    int count = 0;
    QueryAs<ISimpleCollection>(bible.get())->get_Count(&count);
    if (count < 1) {
        HostFail(path + ": no books found");
        return {};
    }
    return bible;
}
