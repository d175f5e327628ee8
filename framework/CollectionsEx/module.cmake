target_link_libraries(CollectionsEx PRIVATE PkgConfig::LIBZIP)
