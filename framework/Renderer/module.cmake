pkg_check_modules(LIBPNG REQUIRED IMPORTED_TARGET libpng)
target_link_libraries(Renderer PRIVATE PkgConfig::LIBPNG)
