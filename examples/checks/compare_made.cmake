# Compares the files of one folder byte for byte with those of another. A program may have to write them
# first; it gets the folder as its last argument.
#
#   cmake [-D PROGRAM=program;argument] -D MADE=folder -D KEPT=folder -D ENDING=k5m -P compare_made.cmake

if(DEFINED PROGRAM)
  file(REMOVE_RECURSE ${MADE})
  file(MAKE_DIRECTORY ${MADE})
  execute_process(COMMAND ${PROGRAM} ${MADE} RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ends with ${status}")
  endif()
endif()

file(GLOB made RELATIVE ${MADE} ${MADE}/*)
file(GLOB kept RELATIVE ${KEPT} ${KEPT}/*.${ENDING})
if(NOT made OR NOT made STREQUAL kept)
  message(FATAL_ERROR "made: ${made}\nkept: ${kept}")
endif()
foreach(name IN LISTS made)
  file(SHA256 ${MADE}/${name} made_sum)
  file(SHA256 ${KEPT}/${name} kept_sum)
  if(NOT made_sum STREQUAL kept_sum)
    message(FATAL_ERROR "${name}: what is made differs from what is kept in ${KEPT}")
  endif()
endforeach()
