# Packages for cpack: a deb and a tar.gz for each component of the installation that this tree has. Included
# last, when all install rules are there.

include_guard(GLOBAL)

set(K5AX_PACKAGE_CONTACT "k5ax maintainers <maintainers@k5ax.invalid>" CACHE STRING
  "Who answers for the packages: name and address")
mark_as_advanced(K5AX_PACKAGE_CONTACT)

get_cmake_property(_k5ax_installed COMPONENTS)
set(K5AX_PACKAGED runtime development tools python doc)
foreach(component IN LISTS K5AX_PACKAGED)
  if(NOT component IN_LIST _k5ax_installed)
    list(REMOVE_ITEM K5AX_PACKAGED ${component})
  endif()
endforeach()

set(CPACK_GENERATOR TGZ)
if(debian_runtime IN_LIST _k5ax_installed)
  list(PREPEND CPACK_GENERATOR DEB)
endif()
set(CPACK_PACKAGE_NAME k5ax)
set(CPACK_PACKAGE_CONTACT ${K5AX_PACKAGE_CONTACT})
string(TOLOWER "k5ax-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}"
  CPACK_PACKAGE_FILE_NAME)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_THREADS 0)
set(CPACK_COMPONENTS_ALL ${K5AX_PACKAGED})

set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)

# What differs between the two kinds, read when cpack makes one of them.
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/packages/layout.cmake)
set(CPACK_K5AX_COMPONENTS ${K5AX_PACKAGED})

# ---- deb ----

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE k5ax)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Where dpkg-shlibdeps finds the library, which no package that it knows has.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

set(_k5ax_runtime_package libk5ax${PROJECT_VERSION_MAJOR})
set(_k5ax_needs_runtime "${_k5ax_runtime_package} (>= ${PROJECT_VERSION})")
set(_k5ax_about "\
k5ax carries positions and tool directions between part and machine, wraps
points about a rotary axis, and poses a scene graph of the machine.")

# k5ax_deb(<component> <package> SECTION <section> [MULTI_ARCH same | foreign] [DEPENDS <packages>]
#   [SUGGESTS <packages>] SUMMARY <words after the hyphen> HOLDS <lines of at most 79 columns> [SHLIBDEPS])
macro(k5ax_deb component package)
  cmake_parse_arguments(deb "SHLIBDEPS" "SECTION;MULTI_ARCH;SUMMARY;HOLDS;DEPENDS;SUGGESTS" "" ${ARGN})
  string(TOUPPER CPACK_DEBIAN_${component} deb)
  set(${deb}_PACKAGE_NAME ${package})
  set(${deb}_PACKAGE_SECTION ${deb_SECTION})
  set(${deb}_DESCRIPTION
    "kinematics of five-axis machine tools - ${deb_SUMMARY}\n${_k5ax_about}\n\n${deb_HOLDS}")
  set(${deb}_PACKAGE_DEPENDS "${deb_DEPENDS}")
  set(${deb}_PACKAGE_SUGGESTS "${deb_SUGGESTS}")
  set(${deb}_PACKAGE_SHLIBDEPS ${deb_SHLIBDEPS})
  set(CPACK_K5AX_MULTI_ARCH_${package} "${deb_MULTI_ARCH}")
endmacro()

k5ax_deb(debian_runtime ${_k5ax_runtime_package} SECTION libs MULTI_ARCH same SHLIBDEPS
  SUMMARY "shared library"
  HOLDS "This package holds the library that programs are linked to.")

k5ax_deb(debian_development libk5ax-dev SECTION libdevel MULTI_ARCH same
  DEPENDS "${_k5ax_runtime_package} (= ${PROJECT_VERSION}), libboost-dev (>= ${K5AX_BOOST_MINIMUM})"
  SUGGESTS "k5ax-doc, cmake, pkg-config"
  SUMMARY "development files"
  HOLDS "\
This package holds the headers, for C++ and for C, the CMake package and the
pkg-config file.")

k5ax_deb(tools k5ax-tools SECTION science SHLIBDEPS
  DEPENDS ${_k5ax_needs_runtime}
  SUGGESTS "k5ax-doc"
  SUMMARY "command-line tool"
  HOLDS "\
This package holds k5ax, which makes, shows, checks, poses and converts
machine definitions, and takes tool paths through them.")

# A module in machine code is for one Python alone.
if(python IN_LIST K5AX_PACKAGED)
  find_package(Python REQUIRED COMPONENTS Interpreter)
  math(EXPR _k5ax_next "${Python_VERSION_MINOR} + 1")
  set(_k5ax_needs_python "python3 (>= 3.${Python_VERSION_MINOR}), python3 (<< 3.${_k5ax_next})")
endif()
k5ax_deb(python python3-k5ax SECTION python SHLIBDEPS
  DEPENDS "${_k5ax_needs_runtime}, ${_k5ax_needs_python}, python3-numpy"
  SUGGESTS "k5ax-doc"
  SUMMARY "Python 3 module"
  HOLDS "This package holds the module k5ax, which works on arrays of numpy.")

set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
k5ax_deb(doc k5ax-doc SECTION doc MULTI_ARCH foreign
  SUMMARY "documentation"
  HOLDS "This package holds the manual and the sources of the example programs.")

# ldconfig finds the library, and other packages learn from which version on it serves them.
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
file(WRITE ${PROJECT_BINARY_DIR}/debian/shlibs
  "libk5ax ${PROJECT_VERSION_MAJOR} ${_k5ax_runtime_package} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/debian/triggers ${PROJECT_BINARY_DIR}/debian/shlibs)

# What cmake/packages/debian_files.cmake puts into each deb.
string(TIMESTAMP _k5ax_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${PROJECT_SOURCE_DIR}/cmake/packages/changelog.in ${PROJECT_BINARY_DIR}/debian/changelog @ONLY)
set(CPACK_K5AX_DEBIAN_DIR ${PROJECT_BINARY_DIR}/debian)

include(CPack)
