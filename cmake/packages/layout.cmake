# Read by cpack for each kind of package.

if(CPACK_GENERATOR STREQUAL "DEB")
  # Libraries go to /usr/lib/<architecture>, for which there are install rules of their own.
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_COMPONENTS_ALL ${CPACK_K5AX_COMPONENTS})
  list(TRANSFORM CPACK_COMPONENTS_ALL PREPEND debian_ REGEX "^(runtime|development)$")
  set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_files.cmake)
  set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/finish_debs.cmake)
  # It would become the first line of every package.
  set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
else()
  # As `cmake --install` lays it out, in one folder, so that archives unpacked in one place are one tree.
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
