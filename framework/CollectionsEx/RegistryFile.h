// The file behind the registry, shared by every "Registry" object of the process.
#pragma once
#include <memory>
#include <string>

#include "framework/CollectionsEx/INIText.h"

// The file's name: VX_REGISTRY if it is set, else registry.ini in the folder that
// holds _binlinux.
std::string RegistryFileName();

// The registry as the file holds it now; read again whenever the file changed. A file
// that is missing, empty or not text is an empty registry.
std::shared_ptr<const INIDocument> RegistryDocument();
