# zet_add_test(TestName [HOST_ONLY] LABEL unit|golden|property|tool SOURCES source... [LIBS library...])
#
# Makes a Qt Test program and registers it with ctest. The test sees the hidden classes of the library, runs without a
# screen, and starts in an empty folder of its own below the build folder, where its output can be looked at afterwards.
# ZET_SOURCE_DIR is the root of the source tree, for test data. HOST_ONLY leaves the library out: the open host is tested
# as it stands, without the features that the library registers with it.
function(zet_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "HOST_ONLY" "LABEL" "SOURCES;LIBS")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "zet_add_test(${name}): not understood: ${arg_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT arg_LABEL MATCHES "^(unit|golden|property|tool)$")
        message(FATAL_ERROR "zet_add_test(${name}): LABEL is \"${arg_LABEL}\", expected unit, golden, property or tool")
    endif()
    if(NOT arg_SOURCES)
        message(FATAL_ERROR "zet_add_test(${name}): no SOURCES")
    endif()

    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests/bin")
    target_compile_definitions(${name} PRIVATE "ZET_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\"")
    if(NOT arg_HOST_ONLY)
        target_link_libraries(${name} PRIVATE ZETLaserObjects)
    endif()
    target_link_libraries(${name} PRIVATE ${arg_LIBS} ZETHost::ZETHost Qt6::Test)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")

    zet_register_test(${name} LABEL ${arg_LABEL} COMMAND $<TARGET_FILE:${name}>)
endfunction()

# zet_register_test(TestName LABEL unit|golden|property|tool COMMAND program argument...)
#
# Registers a program or a script as a test, with the same folder, environment and time limit as a Qt Test program. One
# that leaves out some of its tests, and in which none fails, is told as skipped.
function(zet_register_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL" "COMMAND")
    get_property(names GLOBAL PROPERTY ZET_TEST_NAMES)
    if(name IN_LIST names)
        message(FATAL_ERROR "zet_register_test(${name}): there is a test of this name, whose folder it would share")
    endif()
    set_property(GLOBAL APPEND PROPERTY ZET_TEST_NAMES ${name})
    set(folder "${PROJECT_BINARY_DIR}/tests/run/${name}")
    add_test(NAME ${name}
        COMMAND ${CMAKE_COMMAND} -DFOLDER=${folder} -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/ZETRunTest.cmake
            -- ${arg_COMMAND})
    # The limit ends what hangs; it is far above what a test takes under the sanitizers on a machine that is busy as well.
    # A stack dump forks, and a crash within the allocator then waits for its own lock until the time is up.
    set_tests_properties(${name} PROPERTIES
        LABELS ${arg_LABEL}
        TIMEOUT 900
        SKIP_REGULAR_EXPRESSION "ZETRunTest: a test was skipped"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QTEST_DISABLE_STACK_DUMP=1")
endfunction()
