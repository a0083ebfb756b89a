# Runs a program and looks at its exit status and at what it prints.
#
#   cmake -D STATUS=2 [-D OUT=regex] [-D ERR=regex] [-D ERR_LINES=n] -P expect.cmake -- PROGRAM ARGUMENT...
#
# OUT and ERR are looked for in the standard output and the standard error; ERR_LINES is how many lines the
# latter must have.

set(command "")
set(after_dashes FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
  if(after_dashes)
    list(APPEND command "${CMAKE_ARGV${i}}")
  elseif(CMAKE_ARGV${i} STREQUAL "--")
    set(after_dashes TRUE)
  endif()
endforeach()
if(NOT command OR NOT DEFINED STATUS)
  message(FATAL_ERROR "give STATUS, and a command after --")
endif()

execute_process(COMMAND ${command} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
# C on Windows ends its lines in two characters.
string(REPLACE "\r\n" "\n" out "${out}")
string(REPLACE "\r\n" "\n" err "${err}")
message("${out}${err}exit status ${status}")

if(NOT status STREQUAL STATUS)
  message(FATAL_ERROR "exit status ${status}, expected ${STATUS}")
endif()
if(DEFINED OUT AND NOT out MATCHES "${OUT}")
  message(FATAL_ERROR "the output does not match '${OUT}'")
endif()
if(DEFINED ERR AND NOT err MATCHES "${ERR}")
  message(FATAL_ERROR "the error text does not match '${ERR}'")
endif()
if(DEFINED ERR_LINES)
  string(REGEX MATCHALL "\n" newlines "${err}")
  list(LENGTH newlines lines)
  if(NOT lines EQUAL ERR_LINES)
    message(FATAL_ERROR "${lines} lines of error text, expected ${ERR_LINES}")
  endif()
endif()
