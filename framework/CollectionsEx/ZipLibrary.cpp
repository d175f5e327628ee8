#include "framework/CollectionsEx/ZipLibrary.h"

#include <dlfcn.h>

#include <cstdio>

#ifndef VX_LIBZIP_SONAME
#define VX_LIBZIP_SONAME "libzip.so.4"
#endif

namespace {

struct LoadedZip {
    ZipLibrary functions;
    bool complete = false;

    LoadedZip()
    {
        // Kept open for the rest of the process: archives are read and written again.
        void* library = dlopen(VX_LIBZIP_SONAME, RTLD_NOW | RTLD_LOCAL);
        if (!library) {
            std::fprintf(stderr, "CollectionsEx: can't open %s: %s\n", VX_LIBZIP_SONAME, dlerror());
            return;
        }
        complete = true;
#define VX_ZIP_FIND(name)                                                                      \
        functions.name = reinterpret_cast<decltype(functions.name)>(dlsym(library, #name));    \
        if (!functions.name) {                                                                 \
            std::fprintf(stderr, "CollectionsEx: %s has no %s\n", VX_LIBZIP_SONAME, #name);     \
            complete = false;                                                                  \
        }
        VX_ZIP_FUNCTIONS(VX_ZIP_FIND)
#undef VX_ZIP_FIND
    }
};

const LoadedZip& Loaded()
{
    static const LoadedZip zip;
    return zip;
}

} // namespace

bool ZipLibraryLoaded()
{
    return Loaded().complete;
}

const ZipLibrary& ZipLib()
{
    return Loaded().functions;
}
