# Run by cpack when the debs are made: puts right in each what cpack has no variable for.

set(work ${CPACK_TOPLEVEL_DIRECTORY}/finish)
file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})

foreach(deb IN LISTS CPACK_PACKAGE_FILES)
  get_filename_component(name ${deb} NAME_WLE)
  string(REGEX REPLACE "_.*" "" package ${name})
  execute_process(COMMAND dpkg-deb --raw-extract ${deb} ${work}/${name} COMMAND_ERROR_IS_FATAL ANY)
  set(control ${work}/${name}/DEBIAN)

  # Whether two architectures of it can be installed side by side, or one serves all.
  if(CPACK_K5AX_MULTI_ARCH_${package})
    file(READ ${control}/control fields)
    set(field "Multi-Arch: ${CPACK_K5AX_MULTI_ARCH_${package}}")
    string(REPLACE "\nPackage:" "\n${field}\nPackage:" fields "${fields}")
    file(WRITE ${control}/control "${fields}")
  endif()
  # The trigger does what these scripts are made for.
  file(REMOVE ${control}/postinst ${control}/postrm)

  execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${work}/${name} ${deb}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
