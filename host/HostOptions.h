// The options that writing commands share: "--out FILE" and "--force", apart from
// the positional arguments.
#pragma once
#include <map>
#include <string>

#include "host/Host.h"

struct HostOptions {
    Arguments m_Positional;
    std::string m_Out; // empty: not given
    bool m_Force = false;
    // The command's own options: a flag maps to "", an option with a value to its value.
    std::map<std::string, std::string> m_Own;
};

// False with a message for an unknown option or an option without its value. valued
// and flags name the options a command has beyond "--out" and "--force".
bool HostParseOptions(const Arguments& arguments, HostOptions* options, std::string* error,
                      const Arguments& valued = {}, const Arguments& flags = {});

// Prints to standard error and gives the exit status of a wrong command line.
int HostBadUsage(const std::string& message);
