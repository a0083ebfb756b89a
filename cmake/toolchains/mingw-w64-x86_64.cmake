# Builds for 64-bit Windows on Debian, with g++-mingw-w64-x86-64-posix, and runs what was built under Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# These know link-time optimisation; the plain names do not.
set(CMAKE_AR x86_64-w64-mingw32-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB x86_64-w64-mingw32-gcc-ranlib-posix CACHE FILEPATH "")

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

get_property(_in_try_compile GLOBAL PROPERTY IN_TRY_COMPILE)
if(_in_try_compile)
  return()
endif()

# Libraries that are headers alone are the same for every system. They are linked to from a folder of their
# own: beside them in /usr/include stands the C library of this system.
set(_headers ${CMAKE_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${_headers})
foreach(_name IN ITEMS boost CLI nlohmann)
  file(CREATE_LINK /usr/include/${_name} ${_headers}/${_name} SYMBOLIC)
endforeach()
set(Boost_NO_BOOST_CMAKE ON)
set(Boost_INCLUDE_DIR ${_headers})
set(Eigen3_DIR /usr/share/eigen3/cmake)
foreach(_package IN ITEMS CLI11 nlohmann_json)
  file(WRITE ${_headers}/cmake/${_package}Config.cmake
    "if(NOT TARGET ${_package}::${_package})\n"
    "  add_library(${_package}::${_package} INTERFACE IMPORTED)\n"
    "  target_include_directories(${_package}::${_package} INTERFACE ${_headers})\n"
    "endif()\n")
  set(${_package}_DIR ${_headers}/cmake)
endforeach()

# Programs run with a Wine of this tree's own. It is started anew for every program, which takes about a
# second.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine ${CMAKE_BINARY_DIR})
