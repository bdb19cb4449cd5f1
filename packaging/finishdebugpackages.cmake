# Runs after cpack has written the packages. Its packages of debug symbols list checksums by the paths of the build
# directory, and have no copyright: they get the right paths, and share the documents of the package that they belong to.

foreach(package ${CPACK_PACKAGE_FILES})
    if(package MATCHES "-dbgsym_.*\\.ddeb$")
        execute_process(COMMAND bash "${CMAKE_CURRENT_LIST_DIR}/finish-debug-package" "${package}"
            COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()
