// Runs the built vxhost as a user would, and captures what it prints.
#pragma once
#include <algorithm>
#include <filesystem>
#include <string>

#include "support/Samples.h"

namespace vxtest {

struct HostResult {
    int status = -1;
    std::string out;
    std::string err;
};

// arguments are passed to a shell as they stand: quote them yourself. The host
// runs in folder if one is given, else in the test's working directory.
HostResult RunHost(const std::string& arguments, const std::string& folder = "");

// A command that must fail: its exit status and a part of the one line it writes to stderr.
struct Refusal {
    std::string arguments;
    int status;
    std::string reason;
};

// Runs the command and checks that it fails so, with nothing on stdout.
void ExpectRefusal(const Refusal& refusal);

// The path in single quotes, for the shell.
inline std::string Quote(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

// How many lines the text holds, and how many entries a folder.
inline long LineCount(const std::string& text) { return long(std::count(text.begin(), text.end(), '\n')); }
inline long Entries(const std::filesystem::path& folder)
{
    return long(std::distance(std::filesystem::directory_iterator(folder), {}));
}

} // namespace vxtest
