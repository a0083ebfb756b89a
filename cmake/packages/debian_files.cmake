# Run by cpack when the components stand in their folders, before they become debs: adds to each what Debian
# asks of every package.

# Leaves SOURCE as TARGET.gz, the same bytes from the same bytes.
function(compress source target)
  execute_process(COMMAND gzip -9 -n -c ${source} OUTPUT_FILE ${target}.gz COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(usr ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  string(TOUPPER ${component} upper)
  set(docdir ${usr}/share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  file(MAKE_DIRECTORY ${docdir})
  compress(${CPACK_K5AX_DEBIAN_DIR}/changelog ${docdir}/changelog)
  file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${docdir})

  file(GLOB pages ${usr}/share/man/man*/*.[1-9])
  foreach(page IN LISTS pages)
    compress(${page} ${page})
    file(REMOVE ${page})
  endforeach()

  # The library is where the system looks for it.
  file(GLOB programs ${usr}/bin/*)
  file(GLOB_RECURSE modules ${usr}/lib/python3/*.so)
  foreach(file IN LISTS programs modules)
    file(RPATH_REMOVE FILE ${file})
  endforeach()
endforeach()
