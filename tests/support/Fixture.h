// What every suite that talks to the real modules needs: the working directory
// that holds _binlinux, components by name, strings, and temporary folders.
#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "runtime/Module.h"
#include "runtime/ValueConversion.h"
#include "runtime/VXCore.h"

namespace vxtest {

// Changes into the build folder, as a host does, so siblings load by their relative names.
void EnterBuildFolder();

// A new object of a component, as interface I; empty if it can't be made.
template <class I> SmartPtr<I> Create(const wchar_t* component)
{
    EnterBuildFolder();
    IID iid = I::Iid();
    return SmartPtr<I>::Adopt(static_cast<I*>(static_cast<void*>(CreateObject(CREFString(component), &iid))));
}

// A view of the whole text, without its terminator.
inline CREFString View(const std::wstring& text) { return CREFString(text.data(), int32_t(text.size())); }

// A framework string holding the text.
SmartPtr<IString> Str(const std::wstring& text);

// The text of any object that answers IString; empty for null.
std::wstring Text(IUnknown* object);

std::string Narrow(const std::wstring& text);

// A folder removed with everything in it when the object goes.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const std::filesystem::path& Path() const { return m_Path; }
    std::filesystem::path operator/(const std::string& name) const { return m_Path / name; }

private:
    std::filesystem::path m_Path;
};

// Writes bytes to a file, replacing it.
void WriteBytes(const std::filesystem::path& file, const std::string& bytes);
std::string ReadBytes(const std::filesystem::path& file);

// Suites whose tests use the real modules derive from this.
class ModuleTest : public ::testing::Test {
protected:
    void SetUp() override { EnterBuildFolder(); }
};

} // namespace vxtest
