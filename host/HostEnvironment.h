// Where the host runs: the modules are opened relative to the working directory,
// so the host changes into the folder that holds _binlinux, and every path the
// user gave is taken from where the user was.
#pragma once
#include <string>

// Finds the folder of _binlinux beside the executable and enters it; false with a
// message if there is none.
bool HostEnterModuleFolder(std::string* error);
// A path argument made absolute against the user's own working directory.
std::string HostPath(const std::string& argument);
// Sets the C library's allocator for large texts: a heap that grows in large steps, on
// large pages. A whole Bible is tens of thousands of small objects and megabytes of text;
// page by small page, faulting them in costs more than reading them. Does nothing when the
// allocator is already configured (GLIBC_TUNABLES set, even empty).
void HostUseLargePages();
