# Installs the library, its headers, the CMake package and the pkg-config file, in the components runtime and
# development. Nothing in them holds an absolute path, so an installed tree may be moved.

include_guard(GLOBAL)
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# k5ax_install_library(<libdir> <prefix of the components' names> [EXCLUDE_FROM_ALL])
function(k5ax_install_library libdir prefix)
  set(runtime COMPONENT ${prefix}runtime ${ARGN})
  set(development COMPONENT ${prefix}development ${ARGN})
  set(package_dir ${libdir}/cmake/k5ax)
  set(pkgconfig_dir ${libdir}/pkgconfig)
  set(made_dir ${PROJECT_BINARY_DIR}/${prefix}package)

  install(TARGETS k5ax EXPORT ${prefix}k5axTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} ${runtime}
    LIBRARY DESTINATION ${libdir} ${runtime} NAMELINK_COMPONENT ${prefix}development
    ARCHIVE DESTINATION ${libdir} ${development}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} ${development}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(EXPORT ${prefix}k5axTargets FILE k5axTargets.cmake NAMESPACE k5ax::
    DESTINATION ${package_dir} ${development})

  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/k5axConfig.cmake.in
    ${made_dir}/k5axConfig.cmake INSTALL_DESTINATION ${package_dir})
  write_basic_package_version_file(${made_dir}/k5axConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES ${made_dir}/k5axConfig.cmake ${made_dir}/k5axConfigVersion.cmake
    DESTINATION ${package_dir} ${development})

  # The way up from the .pc file, so that pkg-config too answers for the place where the tree is now.
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
    BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir} OUTPUT_VARIABLE pc_to_prefix)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/k5ax.pc.in ${made_dir}/k5ax.pc @ONLY)
  install(FILES ${made_dir}/k5ax.pc DESTINATION ${pkgconfig_dir} ${development})
endfunction()

k5ax_install_library(${CMAKE_INSTALL_LIBDIR} "")

# A deb has its libraries in a folder with the architecture's name, whatever this tree is configured for.
if(PROJECT_IS_TOP_LEVEL AND CMAKE_LIBRARY_ARCHITECTURE)
  k5ax_install_library(lib/${CMAKE_LIBRARY_ARCHITECTURE} debian_ EXCLUDE_FROM_ALL)
endif()

# What there is to read, with the links between the pages as they are in the tree, and the site that the
# target k5ax_docs makes of it, where it has been made.
if(PROJECT_IS_TOP_LEVEL)
  install(FILES README.md CHANGELOG.md ARCHITECTURE.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
  install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
    FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN site EXCLUDE)
  install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
    PATTERN CMakeLists.txt EXCLUDE PATTERN checks EXCLUDE)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
    OPTIONAL)
endif()
