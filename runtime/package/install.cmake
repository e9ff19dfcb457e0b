# The runtime as a product of its own: libraries, headers, package files for CMake and pkg-config,
# its page and its examples, as the component libqor-dev. The tree may be moved afterwards.
#   qor::qor     for a program that brings no host: the library and the host that stands in
#   qor::hosted  for a program that links a host of its own: the library alone
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME libqor-dev)

set(QOR_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/qor)
set(QOR_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(QOR_DOC_DIR share/doc/libqor-dev)

install(TARGETS qor qor_stand_in ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY . DESTINATION include/qor/runtime
        FILES_MATCHING PATTERN "*.h"
        PATTERN "internal" EXCLUDE
        PATTERN "examples" EXCLUDE
        PATTERN "package" EXCLUDE
        PATTERN "stand_in" EXCLUDE)
install(FILES ${PROJECT_SOURCE_DIR}/docs/runtime.md DESTINATION ${QOR_DOC_DIR})
install(DIRECTORY examples DESTINATION ${QOR_DOC_DIR})

# From the folder of either kind of package file to the prefix.
file(RELATIVE_PATH QOR_PREFIX_FROM_CMAKE /${QOR_CMAKE_DIR} /)
file(RELATIVE_PATH QOR_PREFIX_FROM_PKGCONFIG /${QOR_PKGCONFIG_DIR} /)

# Written by hand: an exported target would ask a project in C for a compiler of C++.
configure_file(package/qor-config.cmake.in qor-config.cmake @ONLY)
write_basic_package_version_file(
  ${CMAKE_CURRENT_BINARY_DIR}/qor-config-version.cmake
  VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qor-config.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/qor-config-version.cmake
        DESTINATION ${QOR_CMAKE_DIR})

foreach(name qor qor-hosted)
  configure_file(package/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc DESTINATION ${QOR_PKGCONFIG_DIR})
endforeach()
