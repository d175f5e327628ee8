// Runs the built vxhost as a user would, and captures what it prints.
#pragma once
#include <filesystem>
#include <string>

namespace vxtest {

struct HostResult {
    int status = -1;
    std::string out;
    std::string err;
};

// arguments are passed to a shell as they stand: quote them yourself. The host
// runs in folder if one is given, else in the test's working directory.
HostResult RunHost(const std::string& arguments, const std::string& folder = "");

// The path in single quotes, for the shell.
inline std::string Quote(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

// A path under the source tree's samples folder.
std::string SamplePath(const std::string& relative);

} // namespace vxtest
