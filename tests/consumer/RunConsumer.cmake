# Installs the built tree into the current folder, then builds and runs the consumer against it, and configures the tree
# itself against the installed host.
#   cmake -DBUILD=folder -DCONFIG=name -DSOURCE=folder -P RunConsumer.cmake

function(run what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result STREQUAL "0")
        message(FATAL_ERROR "${what} ended with ${result}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
    message(STATUS "${what}: done")
endfunction()

file(REAL_PATH "." here)
# Settings that the consumer must share with the tree; sanitizers, for one, are flags of both.
load_cache("${BUILD}" READ_WITH_PREFIX cached_ CMAKE_CXX_COMPILER CMAKE_CXX_FLAGS CMAKE_GENERATOR CMAKE_MAKE_PROGRAM
    CMAKE_EXE_LINKER_FLAGS CMAKE_SHARED_LINKER_FLAGS Qt6_DIR)
set(settings
    -G "${cached_CMAKE_GENERATOR}"
    "-DCMAKE_BUILD_TYPE=${CONFIG}"
    "-DCMAKE_MAKE_PROGRAM=${cached_CMAKE_MAKE_PROGRAM}"
    "-DCMAKE_CXX_COMPILER=${cached_CMAKE_CXX_COMPILER}"
    "-DCMAKE_CXX_FLAGS=${cached_CMAKE_CXX_FLAGS}"
    "-DCMAKE_EXE_LINKER_FLAGS=${cached_CMAKE_EXE_LINKER_FLAGS}"
    "-DCMAKE_SHARED_LINKER_FLAGS=${cached_CMAKE_SHARED_LINKER_FLAGS}"
    "-DQt6_DIR=${cached_Qt6_DIR}"
    "-DCMAKE_PREFIX_PATH=${here}/prefix")

run("install" ${CMAKE_COMMAND} --install "${BUILD}" --config "${CONFIG}" --prefix "${here}/prefix")

file(GLOB_RECURSE packages "${here}/prefix/*.cmake")
foreach(package IN LISTS packages)
    file(READ "${package}" text)
    string(FIND "${text}" "${SOURCE}" found)
    if(NOT found EQUAL -1)
        message(FATAL_ERROR "${package} names a path of the source tree")
    endif()
endforeach()

foreach(document IN ITEMS man/man1/zetlaser-job.1 bash-completion/completions/zetlaser-job
        zsh/site-functions/_zetlaser-job fish/vendor_completions.d/zetlaser-job.fish)
    file(READ "${here}/prefix/share/${document}" text)
    if(NOT text MATCHES "--list-types|list\\\\-types|-l list-types")
        message(FATAL_ERROR "${document} doesn't tell the options of the tool")
    endif()
endforeach()

file(GLOB schemas RELATIVE "${SOURCE}/schema" "${SOURCE}/schema/*")
if(NOT schemas)
    message(FATAL_ERROR "there are no schemas in ${SOURCE}/schema")
endif()
foreach(schema IN LISTS schemas)
    if(NOT EXISTS "${here}/prefix/share/zetlaser/schema/${schema}")
        message(FATAL_ERROR "${schema} isn't installed")
    endif()
endforeach()

run("configure the consumer" ${CMAKE_COMMAND} -S "${SOURCE}/tests/consumer" -B "${here}/consumer" ${settings})
run("build the consumer" ${CMAKE_COMMAND} --build "${here}/consumer" --config "${CONFIG}")
run("run the consumer" "${here}/consumer/consumer")
if(NOT output MATCHES "consumer runs")
    message(FATAL_ERROR "the consumer said: ${output}")
endif()

run("configure with an external host" ${CMAKE_COMMAND} -S "${SOURCE}" -B "${here}/external" ${settings}
    -DZETLASER_HOST=external -DZETLASER_BUILD_TESTS=OFF)
