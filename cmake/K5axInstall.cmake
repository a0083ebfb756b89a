# Installs the library, its headers, the CMake package and the pkg-config file. Nothing in them holds an
# absolute path, so an installed tree may be moved.

include_guard(GLOBAL)
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(_k5ax_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/k5ax)
set(_k5ax_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS k5ax EXPORT k5axTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT k5axTargets NAMESPACE k5ax:: DESTINATION ${_k5ax_package_dir})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/k5axConfig.cmake.in
  ${PROJECT_BINARY_DIR}/k5axConfig.cmake INSTALL_DESTINATION ${_k5ax_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/k5axConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/k5axConfig.cmake ${PROJECT_BINARY_DIR}/k5axConfigVersion.cmake
  DESTINATION ${_k5ax_package_dir})

# The way up from the .pc file, so that pkg-config too answers for the place where the tree is now.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${_k5ax_pkgconfig_dir} OUTPUT_VARIABLE K5AX_PC_TO_PREFIX)
configure_file(${PROJECT_SOURCE_DIR}/cmake/k5ax.pc.in ${PROJECT_BINARY_DIR}/k5ax.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/k5ax.pc DESTINATION ${_k5ax_pkgconfig_dir})
