// What the commands on whole translations share: reading one, and the rule that a
// command does not write over what exists unless told to.
#pragma once
#include <string>

#include "host/Host.h"

// A framework string of the host's UTF-8 text.
SmartPtr<IString> HostWide(const std::string& text);

// True, with the message printed, when `out` exists and `force` is not given.
bool HostRefuseExisting(const std::string& out, bool force);

// The translation at `path`, read; empty with a message when it has no books.
SmartPtr<IFileArchive> HostLoadTranslation(const std::string& path);
