# Functions for the folders that install something.

# Installed programs and libraries find each other wherever the tree is moved.
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_BINDIR BASE_DIRECTORY "/" OUTPUT_VARIABLE bindir)
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY "/" OUTPUT_VARIABLE libdir)
cmake_path(RELATIVE_PATH libdir BASE_DIRECTORY "${bindir}" OUTPUT_VARIABLE libdir_from_bindir)
list(APPEND CMAKE_INSTALL_RPATH "$ORIGIN" "$ORIGIN/${libdir_from_bindir}")

# The translations, and the way to them from the folder of the libraries.
set(PRINTERSLIB_INSTALL_TRANSLATIONSDIR "${CMAKE_INSTALL_DATADIR}/printerslib/translations")
cmake_path(ABSOLUTE_PATH PRINTERSLIB_INSTALL_TRANSLATIONSDIR BASE_DIRECTORY "/"
  OUTPUT_VARIABLE PRINTERSLIB_TRANSLATIONS_FROM_LIBDIR)
cmake_path(RELATIVE_PATH PRINTERSLIB_TRANSLATIONS_FROM_LIBDIR BASE_DIRECTORY "${libdir}")

# The build tree has them in the same folders, so that they are linked as they are installed. CMake
# else fills the search path up with empty elements, to have room for the other path, and the loader
# takes an empty element for the current folder, whoever may write there.
set(PRINTERSLIB_PROGRAM_DIR "${PROJECT_BINARY_DIR}${bindir}")
set(PRINTERSLIB_LIBRARY_DIR "${PROJECT_BINARY_DIR}${libdir}")

# The way from a .pc file to the prefix, for the same reason.
set(PRINTERSLIB_PREFIX_FROM_PKGCONFIG "/")
cmake_path(RELATIVE_PATH PRINTERSLIB_PREFIX_FROM_PKGCONFIG BASE_DIRECTORY "${libdir}/pkgconfig")

# printerslib_install_pkgconfig(NAME.pc.in)
function(printerslib_install_pkgconfig template)
  cmake_path(GET template STEM LAST_ONLY pc_file)
  configure_file("${template}" "${CMAKE_CURRENT_BINARY_DIR}/${pc_file}" @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${pc_file}"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

# printerslib_install_program(NAME): the program, and its manual page, which is made out of the
# program's own help and of the frame NAME.1.in in the calling folder.
function(printerslib_install_program name)
  set(page "${CMAKE_CURRENT_BINARY_DIR}/${name}.1")
  set(maker "${PROJECT_SOURCE_DIR}/cmake/manual-page")
  # Packages are linked without a search path.
  add_custom_command(OUTPUT "${page}"
    COMMAND ${CMAKE_COMMAND} -E env --modify
      "LD_LIBRARY_PATH=path_list_prepend:${PRINTERSLIB_LIBRARY_DIR}"
      "${maker}" $<TARGET_FILE:${name}> "${CMAKE_CURRENT_SOURCE_DIR}/${name}.1.in"
      ${PROJECT_VERSION} "${page}"
    DEPENDS ${name} "${maker}" "${CMAKE_CURRENT_SOURCE_DIR}/${name}.1.in"
    COMMENT "Writing ${name}.1"
    VERBATIM)
  add_custom_target(${name}-manual ALL DEPENDS "${page}")
  install(TARGETS ${name} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
endfunction()
