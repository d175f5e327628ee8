// libzip, opened the first time a packed file is read or written. Most runs never touch
// one, and loading the library (with the compression and crypto libraries it pulls in)
// costs more than a short command's whole work.
#pragma once
#include <zip.h>

#define VX_ZIP_FUNCTIONS(X) \
    X(zip_close) \
    X(zip_dir_add) \
    X(zip_discard) \
    X(zip_error_fini) \
    X(zip_error_init) \
    X(zip_fclose) \
    X(zip_file_add) \
    X(zip_file_get_comment) \
    X(zip_file_set_comment) \
    X(zip_fopen_index) \
    X(zip_fread) \
    X(zip_get_name) \
    X(zip_get_num_entries) \
    X(zip_open_from_source) \
    X(zip_set_file_compression) \
    X(zip_source_buffer) \
    X(zip_source_buffer_create) \
    X(zip_source_close) \
    X(zip_source_free) \
    X(zip_source_keep) \
    X(zip_source_open) \
    X(zip_source_read) \
    X(zip_source_seek) \
    X(zip_source_tell) \
    X(zip_stat_index) \
    X(zip_stat_init)

struct ZipLibrary {
#define VX_ZIP_POINTER(name) decltype(&::name) name = nullptr;
    VX_ZIP_FUNCTIONS(VX_ZIP_POINTER)
#undef VX_ZIP_POINTER
};

// True once the library is open with every function found; the first failure is said
// on the error stream and the answer stays false for the process.
bool ZipLibraryLoaded();

// The library's functions; only after ZipLibraryLoaded() said true.
const ZipLibrary& ZipLib();
