# Installs the SDK of a build, then configures, builds and runs a project that finds it as a package:
# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DCXX_FLAGS=... -P installedsdk.cmake

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")
foreach(component LcdSdk LcdSdkLibraries)
    run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --component ${component} --prefix "${prefix}")
endforeach()
run("${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE_DIR}/consumer" -B "${WORK_DIR}/build"
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run("${WORK_DIR}/build/consumer")
