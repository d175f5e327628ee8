#include "support/Fixture.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

namespace vxtest {

void EnterBuildFolder()
{
    static bool entered = false;
    if (!entered) {
        ASSERT_EQ(chdir(VX_BUILD_DIR), 0) << "cannot enter " << VX_BUILD_DIR;
        entered = true;
    }
}

SmartPtr<IString> Str(const std::wstring& text)
{
    EnterBuildFolder();
    return SmartPtr<IString>::Adopt(ISCreate(View(text)));
}

std::wstring Text(IUnknown* object)
{
    CREFString view(object);
    if (view.m_Length < 1 || !view.m_Buffer)
        return {};
    return std::wstring(view.m_Buffer, size_t(view.m_Length));
}

std::string Narrow(const std::wstring& text)
{
    std::string out;
    for (wchar_t c : text)
        out += (c > 0 && c < 128) ? char(c) : '?';
    return out;
}

TempFolder::TempFolder()
{
    std::random_device random;
    auto base = std::filesystem::temp_directory_path();
    do {
        m_Path = base / ("vxtest-" + std::to_string(random()));
    } while (std::filesystem::exists(m_Path));
    std::filesystem::create_directories(m_Path);
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    std::filesystem::permissions(m_Path, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                 ignored);
    std::filesystem::remove_all(m_Path, ignored);
}

void WriteBytes(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), std::streamsize(bytes.size()));
}

std::string ReadBytes(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

} // namespace vxtest
