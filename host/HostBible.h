// A whole translation as the host opens it for its Bible commands.
#pragma once
#include <string>

#include "runtime/VXCore.h"

// The translation at `path` (a folder, a ".tBL" or an XML file), read; empty, with a
// message on standard error, when it doesn't exist or has no books.
SmartPtr<IFileArchive> LoadTranslation(const std::string& path);
