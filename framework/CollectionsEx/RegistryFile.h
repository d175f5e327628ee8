// The files behind the registry and the string table, shared by every object of the process.
#pragma once
#include <memory>
#include <string>

#include "framework/CollectionsEx/INIText.h"

// A data file shipped beside the modules: the environment variable names it if it is
// set, else fileName in the folder that holds _binlinux.
std::string FileBesideModules(const char* variable, const char* fileName);

// The file's name: VX_REGISTRY if it is set, else registry.ini in the folder that
// holds _binlinux.
std::string RegistryFileName();

// An INI file as it holds it now; read again whenever the file changed. A file that
// is missing, empty or not text is an empty document.
std::shared_ptr<const INIDocument> CachedINIDocument(const std::string& fileName);

// The registry as the file holds it now; read again whenever the file changed. A file
// that is missing, empty or not text is an empty registry.
std::shared_ptr<const INIDocument> RegistryDocument();
