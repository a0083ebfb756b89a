# What Windows has beside the library: where programs find it, the compiler's runtime, a definition file for
# other compilers, and a second form of the library that stands alone.

include_guard(GLOBAL)
include(GNUInstallDirs)

# A program looks for its libraries in its own folder.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# The runtime of the compiler, which a C++ host has to share with the library: exceptions that are thrown on
# one side and caught on the other are counted there.
if(MINGW)
  foreach(_name IN ITEMS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${_name}
      OUTPUT_VARIABLE _path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${_path}")
      message(FATAL_ERROR "k5ax: ${CMAKE_CXX_COMPILER} does not know where its ${_name} stands")
    endif()
    file(REAL_PATH "${_path}" _path)
    file(COPY "${_path}" DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    install(FILES "${_path}" DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  endforeach()
endif()

# k5ax_windows_library(<target>): names it as hosts load it on Windows, and makes what goes with it.
function(k5ax_windows_library target)
  set_target_properties(${target} PROPERTIES PREFIX "")

  # The flat names, of which `lib /def:k5ax.def /machine:x64` makes an import library for Microsoft's linker.
  set(names ${PROJECT_SOURCE_DIR}/tests/exports/plain_names.txt)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${names})
  file(STRINGS ${names} flat_names)
  list(TRANSFORM flat_names PREPEND "  ")
  list(JOIN flat_names "\n" flat_names)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/k5ax.def @ONLY CONTENT "LIBRARY k5ax\nEXPORTS\n@flat_names@\n")
  install(FILES ${PROJECT_BINARY_DIR}/k5ax.def DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

  # For hosts that use the flat face alone, in whatever language: the same library with the runtime inside, so
  # that it needs nothing but the system. It lets out the names of the definition file and no other. Objects
  # that are marked for export would add the class face to them, so it has objects of its own.
  if(MINGW)
    add_library(${target}_standalone SHARED ${PROJECT_BINARY_DIR}/k5ax.def)
    k5ax_library_defaults(${target}_standalone)
    target_compile_definitions(${target}_standalone PRIVATE K5AX_EXPORTS_IN_FILE)
    find_package(Eigen3 3.3 QUIET NO_MODULE)  # what the parts link has to be known here too
    get_target_property(parts ${target} LINK_LIBRARIES)
    foreach(part IN LISTS parts)
      get_target_property(type ${part} TYPE)
      if(type STREQUAL "OBJECT_LIBRARY")
        k5ax_add_sources_of(${target}_standalone ${part})
        target_include_directories(${target}_standalone PRIVATE $<TARGET_PROPERTY:${part},INCLUDE_DIRECTORIES>)
        target_compile_definitions(${target}_standalone PRIVATE $<TARGET_PROPERTY:${part},COMPILE_DEFINITIONS>)
        get_target_property(part ${part} LINK_LIBRARIES)
      endif()
      if(part)
        target_link_libraries(${target}_standalone PRIVATE ${part})
      endif()
    endforeach()
    target_link_options(${target}_standalone PRIVATE -static)
    set_target_properties(${target}_standalone PROPERTIES
      LINKER_LANGUAGE CXX
      PREFIX ""
      OUTPUT_NAME ${target}
      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/standalone
      ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/standalone)
    install(TARGETS ${target}_standalone RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}/standalone COMPONENT runtime
      ARCHIVE EXCLUDE_FROM_ALL DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  endif()
endfunction()
