# The registry the build runs with: build/registry.ini, beside _binlinux, made from
# samples/registry.ini.in. The installation is the source tree's samples/ folder, the
# application's folder is the build folder, and so is the folder of shared files,
# which holds the pictures of icons/.
set(VX_REGISTRY_APP_PATH ${CMAKE_BINARY_DIR})
set(VX_REGISTRY_INSTALL_PATH ${CMAKE_SOURCE_DIR}/samples)
set(VX_REGISTRY_COMMON_PATH ${CMAKE_BINARY_DIR})
set(VX_REGISTRY_PROJECT_PATH ${CMAKE_SOURCE_DIR})
configure_file(${CMAKE_SOURCE_DIR}/samples/registry.ini.in ${CMAKE_BINARY_DIR}/registry.ini @ONLY)
# The string table ships beside _binlinux as it is.
configure_file(${CMAKE_SOURCE_DIR}/samples/stringtable.ini ${CMAKE_BINARY_DIR}/stringtable.ini COPYONLY)
# The pictures go to build/icons as they are; a changed or added picture is copied
# at the next build.
file(GLOB VX_ICONS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/icons/*.png)
foreach(icon ${VX_ICONS})
  get_filename_component(icon_name ${icon} NAME)
  configure_file(${icon} ${CMAKE_BINARY_DIR}/icons/${icon_name} COPYONLY)
endforeach()
