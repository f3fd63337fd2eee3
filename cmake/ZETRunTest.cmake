# cmake -DFOLDER=folder -P ZETRunTest.cmake -- program argument...
#
# Runs the program in the folder, which is emptied first, and fails when the program fails.

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
execute_process(COMMAND ${command} WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE result)
if(NOT result STREQUAL "0")
    list(GET command 0 program)
    message(FATAL_ERROR "${program} ended with: ${result}")
endif()
