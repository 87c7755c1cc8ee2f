# What "cmake --install" puts where: headers, the libraries, their CMake package and pkg-config modules,
# rules for the system, examples. The tools install themselves, and so do the platform's targets: clients
# find those in the package that PRINTERSLIB_PLATFORM_PACKAGE names.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/printerslib")

install(TARGETS printerslib EXPORT printerslib-targets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/printerslib")
install(EXPORT printerslib-targets NAMESPACE printerslib:: DESTINATION "${package_dir}")
# Exported by itself: its development files may be absent where those of printerslib are installed.
install(TARGETS printerslib-drivers EXPORT printerslib-drivers-targets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT printerslib-drivers-targets NAMESPACE printerslib:: DESTINATION "${package_dir}")
configure_package_config_file(cmake/printerslib-config.cmake.in
  "${PROJECT_BINARY_DIR}/printerslib-config.cmake"
  INSTALL_DESTINATION "${package_dir}"
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/printerslib-config-version.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/printerslib-config.cmake"
    "${PROJECT_BINARY_DIR}/printerslib-config-version.cmake"
  DESTINATION "${package_dir}")

printerslib_install_pkgconfig(cmake/printerslib.pc.in)
printerslib_install_pkgconfig(cmake/printerslib-drivers.pc.in)

# Who may use printers, and where they take turns. The system looks for both below lib, whatever the
# folder of the libraries is.
install(FILES packaging/udev/70-printerslib.rules DESTINATION lib/udev/rules.d)
install(FILES packaging/tmpfiles/printerslib.conf DESTINATION lib/tmpfiles.d)

install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DATADIR}/printerslib")
