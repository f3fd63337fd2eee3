# cmake -DFOLDER=folder -P ZETRunTest.cmake -- program argument...
#
# Runs the program in the folder, which is emptied first, and fails when the program fails. Where it succeeds but has left
# a test out, as Qt Test and Python's unittest tell, a last line says so, which ctest knows by the property that
# zet_register_test sets. A program alone can't make ctest see that: what it prints would hide its failures, too.

set(command)
set(isCommand FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(index RANGE ${last})
    if(isCommand)
        list(APPEND command "${CMAKE_ARGV${index}}")
    elseif("${CMAKE_ARGV${index}}" STREQUAL "--")
        set(isCommand TRUE)
    endif()
endforeach()
if(NOT command OR NOT FOLDER)
    message(FATAL_ERROR "expected -DFOLDER=folder -- program argument...")
endif()

file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
execute_process(COMMAND ${command} WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE result
    OUTPUT_VARIABLE output ERROR_VARIABLE output ECHO_OUTPUT_VARIABLE ECHO_ERROR_VARIABLE)
if(NOT result STREQUAL "0")
    list(GET command 0 program)
    message(FATAL_ERROR "${program} ended with: ${result}")
endif()
if(output MATCHES "(^|\n)SKIP   : |(^|\n)OK [(][^\n]*skipped=")
    message(STATUS "ZETRunTest: a test was skipped")
endif()
