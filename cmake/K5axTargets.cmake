# What our own targets are built with. Everything here is private to the target it is called for: nothing
# reaches a host through k5ax::k5ax.

include_guard(GLOBAL)
include(CheckIPOSupported)

option(K5AX_WERROR "Treat warnings in k5ax's own sources as errors" OFF)
set(K5AX_SANITIZE "" CACHE STRING "Sanitizers for k5ax's own targets, a list such as address;undefined")
option(K5AX_ASSERTIONS "Let the C++ library check its preconditions in k5ax's own targets" OFF)
mark_as_advanced(K5AX_ASSERTIONS)

# Inside another project the warnings are that project's business: it asked for a library, not for our
# opinion.
option(K5AX_WARNINGS "Compile k5ax's own sources with its full set of warnings" ${PROJECT_IS_TOP_LEVEL})
mark_as_advanced(K5AX_WARNINGS)

set(K5AX_COMMON_WARNINGS
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion
  -Wcast-align -Wcast-qual -Wformat=2 -Wundef -Wmissing-declarations -Wunused)
set(K5AX_CXX_WARNINGS
  -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi)
set(K5AX_C_WARNINGS
  -Wstrict-prototypes -Wmissing-prototypes -Wold-style-definition)
set(K5AX_GCC_WARNINGS
  -Wduplicated-cond -Wduplicated-branches -Wlogical-op)
if(MINGW)
  list(APPEND K5AX_C_WARNINGS -Wno-float-conversion)  # its isfinite names a float for each double
endif()
if(MINGW AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  list(APPEND K5AX_GCC_WARNINGS -Wno-restrict)  # it sees an overlap in "text" + std::string that is none
endif()

# Warnings, sanitizers and arithmetic as written (no contraction to fused operations: the same source gives
# the same figures on every machine and under every compiler).
function(k5ax_target_defaults target)
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  if(K5AX_WARNINGS)
    target_compile_options(${target} PRIVATE
      ${K5AX_COMMON_WARNINGS}
      "$<$<COMPILE_LANGUAGE:CXX>:${K5AX_CXX_WARNINGS}>"
      "$<$<COMPILE_LANGUAGE:C>:${K5AX_C_WARNINGS}>"
      "$<$<CXX_COMPILER_ID:GNU>:${K5AX_GCC_WARNINGS}>")
  endif()
  if(K5AX_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(K5AX_ASSERTIONS)
    target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
  endif()
  if(K5AX_SANITIZE)
    list(JOIN K5AX_SANITIZE "," names)
    target_compile_options(${target} PRIVATE
      -fsanitize=${names} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${names})
  endif()
endfunction()

# For the targets whose objects end in libk5ax.so, and for the executables that link those objects directly.
function(k5ax_library_defaults target)
  # Hosts on Windows link to the inline members of the class templates that the library has made for them.
  set(hide_inlines ON)
  if(WIN32)
    set(hide_inlines OFF)
  endif()
  k5ax_target_defaults(${target})
  target_compile_features(${target} PRIVATE cxx_std_17)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    C_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ${hide_inlines})
  target_compile_definitions(${target} PRIVATE K5AX_BUILDING_LIBRARY)
  # Nobody replaces a function of ours at load time, so calls inside the library need no detour (clang assumes
  # that anyway).
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
  # No other values, only less work: nobody reads errno, so that a square root is one instruction; and doubles
  # are not collected into pairs, which are slow to load where they were just written one by one.
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-fno-math-errno;-fno-tree-slp-vectorize>)
  k5ax_target_ipo(${target})
endfunction()

# The sources of object libraries once more, to be compiled in another way for `target`.
function(k5ax_add_sources_of target)
  foreach(part IN LISTS ARGN)
    get_target_property(folder ${part} SOURCE_DIR)
    get_target_property(sources ${part} SOURCES)
    foreach(source IN LISTS sources)
      cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder})
      target_sources(${target} PRIVATE ${source})
    endforeach()
  endforeach()
endfunction()

# Interprocedural optimisation in release builds. The per-position arithmetic is small functions in several
# files. Not with MinGW, whose linker loses thunks where other objects beside these are not optimised so.
function(k5ax_target_ipo target)
  if(NOT DEFINED CACHE{K5AX_IPO_SUPPORTED})
    if(MINGW)
      set(supported FALSE)
    else()
      check_ipo_supported(RESULT supported LANGUAGES CXX)
    endif()
    set(K5AX_IPO_SUPPORTED ${supported} CACHE INTERNAL "The compiler can optimise across files")
  endif()
  if(K5AX_IPO_SUPPORTED)
    set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)
  endif()
endfunction()
