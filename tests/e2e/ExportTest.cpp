// Each module shows the process its two entry points and nothing else of ours.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <set>
#include <sstream>

namespace {

std::set<std::string> DefinedSymbols(const std::filesystem::path& module)
{
    std::string command = "nm -D --defined-only '" + module.string() + "' 2>/dev/null";
    std::set<std::string> symbols;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return symbols;
    char line[4096];
    while (fgets(line, sizeof line, pipe)) {
        std::istringstream fields(line);
        std::string address, type, name;
        if (fields >> address >> type >> name)
            symbols.insert(name);
    }
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
