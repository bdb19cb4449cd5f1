# cmake -DOUTPUT=<file> -DSOURCES=<files> -P JoinTests.cmake: writes the source of a program with several tests. Each test
# is in a namespace with its name, because their classes and functions may have the same names. The headers come first,
# so that nothing is left to include within a namespace.

set(headers "")
set(tests "")
set(table "")
foreach(source ${SOURCES})
    get_filename_component(name "${source}" NAME_WE)
    get_filename_component(directory "${source}" DIRECTORY)
    file(STRINGS "${source}" includes REGEX "^#include ")
    foreach(include ${includes})
        string(REGEX REPLACE "^#include [\"<]([^\">]*)[\">].*" "\\1" header "${include}")
        if(header MATCHES "\\.moc$")
            continue()
        elseif(include MATCHES "\"" AND EXISTS "${directory}/${header}")
            set(include "#include \"${directory}/${header}\"")
        endif()
        list(APPEND headers "${include}")
    endforeach()
    string(APPEND tests "namespace ${name} {\n#include \"${source}\"\n}\n")
    string(APPEND table "    {\"${name}\", ${name}::main},\n")
endforeach()
list(REMOVE_DUPLICATES headers)
list(JOIN headers "\n" headers)
file(WRITE "${OUTPUT}" "#include \"joinedtests.h\"\n\n${headers}\n\n${tests}\n"
    "int main(int argc, char **argv)\n{\n    return runJoinedTest({\n${table}    }, argc, argv);\n}\n")
