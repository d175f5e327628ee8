# libzip is opened by name on first use (ZipLibrary.cpp), so the module needs only its
# headers here and the name the loader knows it by.
target_include_directories(CollectionsEx PRIVATE ${LIBZIP_INCLUDE_DIRS})
target_compile_options(CollectionsEx PRIVATE ${LIBZIP_CFLAGS_OTHER})
find_library(VX_LIBZIP_FILE NAMES zip HINTS ${LIBZIP_LIBRARY_DIRS})
execute_process(COMMAND objdump -p ${VX_LIBZIP_FILE} OUTPUT_VARIABLE VX_LIBZIP_HEADERS ERROR_QUIET)
if(VX_LIBZIP_HEADERS MATCHES "SONAME +([^\n ]+)")
  target_compile_definitions(CollectionsEx PRIVATE VX_LIBZIP_SONAME="${CMAKE_MATCH_1}")
else()
  message(WARNING "libzip's SONAME not found in ${VX_LIBZIP_FILE}; using libzip.so.4")
endif()
