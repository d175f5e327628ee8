// Each module shows the process its two entry points and nothing else of ours.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <set>

namespace {

std::set<std::string> DefinedSymbols(const std::filesystem::path& module)
{
    std::set<std::string> symbols;
    FILE* pipe = popen(("nm -D --defined-only '" + module.string() + "' 2>/dev/null").c_str(), "r");
    char address[256], type[8], name[1024];
    while (pipe && fscanf(pipe, "%255s %7s %1023s", address, type, name) == 3)
        symbols.insert(name);
    if (pipe)
        pclose(pipe);
    return symbols;
}

TEST(Exports, OnlyTheTwoEntryPoints)
{
    std::filesystem::path folder = std::filesystem::path(VX_BUILD_DIR) / "_binlinux";
    int modules = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".so")
            continue;
        ++modules;
        std::set<std::string> expected = {"CreateFunction", "InitializeModule"};
        EXPECT_EQ(DefinedSymbols(entry.path()), expected) << entry.path().filename();
    }
    EXPECT_GE(modules, 3);
}

} // namespace
