# Builds and runs the project in host/ against the library, in one way of use (WAY), below SCRATCH.
cmake_minimum_required(VERSION 3.23)

# Runs a command, shows what it printed and stops the test when it fails; the output is left in `output`.
macro(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${SCRATCH}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}\nended with ${result}")
  endif()
endmacro()

# What is installed may be moved, so it must not know where it came from.
macro(check_that_no_path_is_in folder)
  file(GLOB_RECURSE texts ${folder}/*.cmake ${folder}/*.pc ${folder}/*.h)
  if(NOT texts)
    message(FATAL_ERROR "nothing was installed")
  endif()
  foreach(text IN LISTS texts)
    file(READ ${text} content)
    foreach(path IN ITEMS ${SCRATCH} ${TREE} ${SOURCE})
      string(FIND "${content}" "${path}" at)
      if(NOT at EQUAL -1)
        message(FATAL_ERROR "${text} holds the path ${path}")
      endif()
    endforeach()
  endforeach()
endmacro()

# Installs the tree, then moves what was installed: it must work from where it is, not from where it was put.
macro(install_and_move)
  run(${CMAKE_COMMAND} --install ${TREE} --prefix ${SCRATCH}/before)
  file(RENAME ${SCRATCH}/before ${SCRATCH}/moved)
  check_that_no_path_is_in(${SCRATCH}/moved)
endmacro()

macro(build_and_run_host)
  run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/host -B ${SCRATCH}/build -G ${GENERATOR}
    -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON ${ARGN})
  # A host that configures with warnings as errors would stop here.
  if(output MATCHES "Warning")
    message(FATAL_ERROR "configuring is not quiet:\n${output}")
  endif()
  run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
  if(output MATCHES "warning:")
    message(FATAL_ERROR "building is not quiet:\n${output}")
  endif()
  foreach(program IN ITEMS host_cxx host_c)
    run(${SCRATCH}/build/${program})
    message("${output}")
  endforeach()
endmacro()

# The package is none for a host that was written for another MAJOR version, or for a later one of the same.
macro(check_that_other_versions_are_refused prefix)
  foreach(wanted IN ITEMS 0.9 1.99 2.0)
    execute_process(COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/host -B ${SCRATCH}/refused
      -G ${GENERATOR} -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
      -DCMAKE_PREFIX_PATH=${prefix} -DK5AX_WANTED=${wanted}
      RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(result EQUAL 0 OR NOT output MATCHES "k5axConfig[.]cmake, version: [0-9.]+")
      message(FATAL_ERROR "version ${wanted} is not refused:\n${output}")
    endif()
  endforeach()
endmacro()

# Builds the host's programs with what pkg-config says of the tree at `prefix`, and runs them with the
# libraries in the folder `libraries`.
macro(build_and_run_by_pkg_config prefix libdir libraries)
  set(ENV{PKG_CONFIG_PATH} ${prefix}/${libdir}/pkgconfig)
  run(${PKG_CONFIG} --cflags --libs k5ax)
  separate_arguments(flags UNIX_COMMAND "${output}")
  run(${CXX_COMPILER} -std=c++11 ${CMAKE_CURRENT_LIST_DIR}/host/main.cpp -o ${SCRATCH}/host_cxx ${flags})
  run(${C_COMPILER} -std=c11 ${CMAKE_CURRENT_LIST_DIR}/host/main.c -o ${SCRATCH}/host_c ${flags} -lm)
  set(ENV{LD_LIBRARY_PATH} ${libraries})
  foreach(program IN ITEMS host_cxx host_c)
    run(${SCRATCH}/${program})
    message("${output}")
  endforeach()
endmacro()

# As a subdirectory the library keeps to itself: no flag of its own on the host's sources, none of its tests.
macro(check_that_nothing_leaks)
  file(READ ${SCRATCH}/build/compile_commands.json commands)
  string(JSON last LENGTH "${commands}")
  math(EXPR last "${last} - 1")
  set(host_sources 0)
  foreach(i RANGE ${last})
    string(JSON file GET "${commands}" ${i} file)
    string(JSON command GET "${commands}" ${i} command)
    if(file MATCHES "/host/main[.]")
      math(EXPR host_sources "${host_sources} + 1")
      if(command MATCHES " -W| -f(no-)?sanitize| -ffp-contract| -fvisibility| -flto")
        message(FATAL_ERROR "flags of the library reach the host: ${command}")
      endif()
    elseif(file MATCHES "/(tests|examples|benchmarks)/" AND NOT file MATCHES "/host/")
      message(FATAL_ERROR "the host's build has ${file}")
    endif()
  endforeach()
  if(NOT host_sources EQUAL 2)
    message(FATAL_ERROR "looked at ${host_sources} sources of the host instead of 2")
  endif()
endmacro()

file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})

if(WAY STREQUAL "find_package")
  install_and_move()
  build_and_run_host(-DCMAKE_PREFIX_PATH=${SCRATCH}/moved -DCMAKE_BUILD_TYPE=Release)
  check_that_other_versions_are_refused(${SCRATCH}/moved)
elseif(WAY STREQUAL "add_subdirectory")
  # No build type: whatever the host chooses is the library's too, and so is no choice.
  build_and_run_host(-DK5AX_FROM=${SOURCE})
  check_that_nothing_leaks()
elseif(WAY STREQUAL "other_geometry")
  build_and_run_host(-DK5AX_FROM=${SOURCE} -DOTHER_GEOMETRY=ON)
elseif(WAY STREQUAL "pkg_config")
  install_and_move()
  build_and_run_by_pkg_config(${SCRATCH}/moved ${LIBDIR} ${SCRATCH}/moved/${LIBDIR})
elseif(WAY STREQUAL "debs")
  include(${CMAKE_CURRENT_LIST_DIR}/debs.cmake)
elseif(WAY STREQUAL "archives")
  include(${CMAKE_CURRENT_LIST_DIR}/archives.cmake)
else()
  message(FATAL_ERROR "no such way of use: '${WAY}'")
endif()
