#include "e2e/HostRun.h"

#include "support/Fixture.h"

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>

namespace vxtest {

HostResult RunHost(const std::string& arguments, const std::string& folder)
{
    auto errFile = std::filesystem::temp_directory_path() / ("vxhost-err-" + std::to_string(getpid()));
    std::string command = std::string(VX_BUILD_DIR) + "/vxhost " + arguments + " 2>" + errFile.string();
    if (!folder.empty())
        command = "cd '" + folder + "' && " + command;
    HostResult result;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return result;
    char buffer[4096];
    size_t got;
    while ((got = fread(buffer, 1, sizeof buffer, pipe)) > 0)
        result.out.append(buffer, got);
    int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.err = ReadBytes(errFile);
    std::filesystem::remove(errFile);
    return result;
}

void ExpectRefusal(const Refusal& refusal)
{
    HostResult result = RunHost(refusal.arguments);
    EXPECT_EQ(result.status, refusal.status) << refusal.arguments;
    EXPECT_NE(result.err.find(refusal.reason), std::string::npos) << refusal.arguments << "\n" << result.err;
    EXPECT_EQ(LineCount(result.err), 1) << refusal.arguments << "\n" << result.err;
    EXPECT_EQ(result.out, "") << refusal.arguments;
}

} // namespace vxtest
