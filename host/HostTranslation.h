// What the commands on whole translations share: framework strings of the host's text,
// and the rule that a command does not write over what exists unless told to.
#pragma once
#include <string>

#include "host/Host.h"

// A framework string of the host's UTF-8 text.
SmartPtr<IString> HostWide(const std::string& text);

// True, with the message printed, when `out` exists and `force` is not given.
bool HostRefuseExisting(const std::string& out, bool force);
