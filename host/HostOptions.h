// The options that writing commands share: "--out FILE" and "--force", apart from
// the positional arguments.
#pragma once
#include <string>

#include "host/Host.h"

struct HostOptions {
    Arguments m_Positional;
    std::string m_Out; // empty: not given
    bool m_Force = false;
};

// False with a message for an unknown option or a "--out" without its file.
bool HostParseOptions(const Arguments& arguments, HostOptions* options, std::string* error);

// Prints to standard error and gives the exit status of a wrong command line.
int HostBadUsage(const std::string& message);
