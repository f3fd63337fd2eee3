# zet_add_benchmark(BenchName SOURCES source... [LIBS library...])
#
# Makes a Google Benchmark program that sees the hidden classes of the library. `make bench` runs them all, one after the
# other; the environment variable BENCHMARK_FILTER chooses among the cases, as the option of that name does.
function(zet_add_benchmark name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBS")
    if(arg_UNPARSED_ARGUMENTS OR NOT arg_SOURCES)
        message(FATAL_ERROR "zet_add_benchmark(${name}): expected SOURCES source... [LIBS library...]")
    endif()
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/benchmarks/bin")
    target_compile_definitions(${name} PRIVATE "ZET_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\"")
    target_link_libraries(${name} PRIVATE ${arg_LIBS} ZETLaserObjects ZETHost::ZETHost benchmark::benchmark_main)
    set_property(GLOBAL APPEND PROPERTY ZET_BENCHMARKS ${name})
endfunction()

# zet_add_bench_target(): makes the target bench, which runs what zet_add_benchmark has made so far.
function(zet_add_bench_target)
    get_property(benchmarks GLOBAL PROPERTY ZET_BENCHMARKS)
    if(NOT benchmarks)
        add_custom_target(bench
            COMMAND ${CMAKE_COMMAND} -E echo "bench: there are no benchmarks"
            COMMAND ${CMAKE_COMMAND} -E false
            VERBATIM)
        return()
    endif()
    set(commands)
    foreach(benchmark IN LISTS benchmarks)
        list(APPEND commands COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:${benchmark}>)
    endforeach()
    add_custom_target(bench ${commands} WORKING_DIRECTORY "${PROJECT_BINARY_DIR}/benchmarks" USES_TERMINAL VERBATIM)
    add_dependencies(bench ${benchmarks})
endfunction()
