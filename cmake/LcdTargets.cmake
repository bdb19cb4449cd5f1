# What all targets of this project share: output places, language, warnings, sanitizers, and one way to add a test.

set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_INSTALL_RPATH "$ORIGIN:$ORIGIN/../lib")

# Where things are installed. The component and panelhost look for files beside themselves: a program in bin/ finds its
# libraries in ../lib and the configuration files in ../share. Their names are fixed, so these three are in a directory
# of their own instead of in the system's directories. Its share/ is a link to LCD_INSTALL_SHAREDIR.
set(LCD_INSTALL_PRIVATEDIR "lib/lcdfactorymode")
set(LCD_INSTALL_SHAREDIR "share/lcdfactorymode")

find_program(LCD_CCACHE ccache)
if(LCD_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # ccache looks into a precompiled header by its content and not by the macros that went into it.
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${LCD_CCACHE}")
endif()

# lcd_target(<target>): language level, warnings and strict Qt for a target of this project.
function(lcd_target target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON AUTOMOC ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        "-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # Qt's qCDebug(category) leaves the variable arguments of its macro out, which C++20 allows.
        target_compile_options(${target} PRIVATE -Wno-gnu-zero-variadic-macro-arguments)
    endif()
    # All symbols are bound and made read-only at load, and no code is written to or lies on the stack.
    target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack,-z,text)
    if(LCD_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS QT_NO_FOREACH
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DEPRECATED_WARNINGS QT_MESSAGELOGCONTEXT)
    if(LCD_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${LCD_SANITIZE} -fno-omit-frame-pointer
            -fno-sanitize=vptr)
        target_link_options(${target} PRIVATE -fsanitize=${LCD_SANITIZE})
    endif()
    if(LCD_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# lcd_compile_at_once(<target> <sources...>): with LCD_UNITY_BUILD, compiles these sources of <target> as one unit.
function(lcd_compile_at_once target)
    if(LCD_UNITY_BUILD)
        list(GET ARGN 0 first)
        get_filename_component(first "${first}" ABSOLUTE)
        get_filename_component(directory "${first}" DIRECTORY)
        get_filename_component(unit "${directory}" NAME)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
        # A warning about headers. Here, the sources are included.
        target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
        set_source_files_properties(${ARGN} PROPERTIES UNITY_GROUP "${unit}")
    endif()
endfunction()

# lcd_moc_source(<target> <source>): runs moc over the classes in <source>, which includes <source's name>.moc. For a
# program of one such file this costs a hundredth of AUTOMOC. moc isn't told where headers are: reading them would take
# nearly all of its time, and it knows the macros of Qt that are used here.
function(lcd_moc_source target source)
    get_filename_component(name "${source}" NAME_WE)
    get_filename_component(path "${source}" ABSOLUTE)
    set(directory "${CMAKE_CURRENT_BINARY_DIR}/${target}_moc")
    set(definitions "$<TARGET_PROPERTY:${target},COMPILE_DEFINITIONS>")
    add_custom_command(OUTPUT "${directory}/${name}.moc"
        COMMAND Qt5::moc --include "${LCD_MOC_PREDEFS}" "-D$<JOIN:${definitions},;-D>" "${path}" -o "${directory}/${name}.moc"
        DEPENDS "${path}" "${LCD_MOC_PREDEFS}" COMMENT "moc ${name}.cpp" COMMAND_EXPAND_LISTS VERBATIM)
    target_sources(${target} PRIVATE "${directory}/${name}.moc")
    target_include_directories(${target} PRIVATE "${directory}")
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
    add_dependencies(${target} moc_predefs)
endfunction()

# lcd_join_test(<name> <source> <program> <path>): makes <name>, whose test class is in <source>, a part of <program>.
# The source of <program> includes those of its tests, each in a namespace. <path> is a hard link to <program>, which
# runs the test with the name of the link.
function(lcd_join_test name source program path)
    if(NOT TARGET ${program})
        set(unit "${CMAKE_CURRENT_BINARY_DIR}/${program}.cpp")
        set(sources "$<TARGET_PROPERTY:${program},LCD_TEST_SOURCES>")
        set(script "${CMAKE_SOURCE_DIR}/cmake/JoinTests.cmake")
        add_custom_command(OUTPUT "${unit}"
            COMMAND "${CMAKE_COMMAND}" "-DOUTPUT=${unit}" "-DSOURCES=${sources}" -P "${script}"
            DEPENDS "${sources}" "${script}" COMMENT "Joining the tests of ${program}" VERBATIM)
        add_executable(${program} "${unit}")
        lcd_target(${program})
        target_include_directories(${program} PRIVATE "${CMAKE_SOURCE_DIR}/tests/support")
        # A warning about headers. Here, the sources are included.
        target_compile_options(${program} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endif()
    get_filename_component(source "${source}" ABSOLUTE)
    set_property(TARGET ${program} APPEND PROPERTY LCD_TEST_SOURCES "${source}")
    get_filename_component(directory "${path}" DIRECTORY)
    file(MAKE_DIRECTORY "${directory}")
    add_custom_command(OUTPUT "${path}" COMMAND ln -f $<TARGET_FILE:${program}> "${path}"
        DEPENDS ${program} COMMENT "Linking ${name}" VERBATIM)
    add_custom_target(${name} ALL DEPENDS "${path}")
endfunction()

# lcd_add_test(<name> SOURCES <files...> [LIBRARIES <targets...>] [INCLUDES <directories...>]
#     [DEFINITIONS <definitions...>] [LABELS <labels...>] [TIMEOUT <seconds>] [WRAPPER <program>] [PROGRAM <name>]
#     [DIRECTORY <directory>] [EXPORTS])
# Builds tests/<directory>/<name> from its sources and runs it without a display, as an argument of the wrapper if there
# is one. The first source has the test class. PROGRAM: with LCD_UNITY_BUILD, all tests with this name are compiled as
# one unit and linked to one program, because most of the time would be spent on the headers that they share. EXPORTS:
# libraries find the symbols of the program.
function(lcd_add_test name)
    cmake_parse_arguments(TEST "EXPORTS" "TIMEOUT;WRAPPER;PROGRAM;DIRECTORY"
        "SOURCES;LIBRARIES;INCLUDES;DEFINITIONS;LABELS" ${ARGN})
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT 120)
    endif()
    if(CMAKE_CROSSCOMPILING)
        math(EXPR TEST_TIMEOUT "${TEST_TIMEOUT} * 10") # an emulator runs it
    elseif(LCD_SANITIZE)
        math(EXPR TEST_TIMEOUT "${TEST_TIMEOUT} * 3")
    endif()
    list(POP_FRONT TEST_SOURCES source)
    set(directory "${CMAKE_BINARY_DIR}/tests")
    if(TEST_DIRECTORY)
        string(APPEND directory "/${TEST_DIRECTORY}")
    endif()
    # With the thread sanitizer, a few tests are built, and without libraries that only the others need.
    if(TEST_PROGRAM AND LCD_UNITY_BUILD AND NOT LCD_SANITIZE MATCHES "thread")
        set(target ${TEST_PROGRAM})
        lcd_join_test(${name} "${source}" ${target} "${directory}/${name}")
        set(directory "${CMAKE_BINARY_DIR}/tests")
    else()
        set(target ${name})
        add_executable(${name} "${source}")
        lcd_target(${name})
    endif()
    target_precompile_headers(${target} REUSE_FROM test_headers)
    lcd_moc_source(${target} "${source}")
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${directory}")
    if(TEST_EXPORTS)
        set_target_properties(${target} PROPERTIES ENABLE_EXPORTS ON)
    endif()
    target_sources(${target} PRIVATE ${TEST_SOURCES})
    target_link_libraries(${target} PRIVATE Qt5::Test Qt5::Widgets ${TEST_LIBRARIES})
    target_include_directories(${target} PRIVATE ${TEST_INCLUDES})
    target_compile_definitions(${target} PRIVATE "LCD_SOURCE_DIR=\"${CMAKE_SOURCE_DIR}\""
        "LCD_BUILD_DIR=\"${CMAKE_BINARY_DIR}\"" ${TEST_DEFINITIONS})
    if(NOT target STREQUAL name)
        set(command ${CMAKE_CROSSCOMPILING_EMULATOR} ${TEST_WRAPPER} "${CMAKE_BINARY_DIR}/tests/${TEST_DIRECTORY}/${name}")
    elseif(TEST_WRAPPER)
        set(command ${TEST_WRAPPER} $<TARGET_FILE:${name}>)
    else()
        set(command ${name}) # the name of the target, so that CMake puts the emulator before it
    endif()
    add_test(NAME ${name} COMMAND ${command})
    set_property(GLOBAL PROPERTY LCD_COMMAND_${name} "${command}") # for a test that runs it in another environment
    # What the thread sanitizer has to see: tests in which other threads use the component or the SDK.
    if((name MATCHES "${LCD_THREADED_TESTS}" AND "${TEST_LABELS}" MATCHES "component|sdk")
            OR name MATCHES "${LCD_THREADED_HOST_TESTS}")
        list(APPEND TEST_LABELS threads)
        add_dependencies(threaded_tests ${name})
    endif()
    # Tests that wait start first, and then those that may take longer, so that no long one runs alone at the end. A time
    # limit only ends a test that hangs, so it leaves time for a machine that is busy with something else.
    math(EXPR limit "${TEST_TIMEOUT} * 3")
    set(environment "${LCD_TEST_ENVIRONMENT}")
    if(name MATCHES "${LCD_LEAKING_TESTS}")
        string(REPLACE "ASAN_OPTIONS=" "ASAN_OPTIONS=detect_leaks=0:" environment "${environment}")
    endif()
    set(cost ${TEST_TIMEOUT})
    if(name MATCHES "${LCD_WAITING_TESTS}")
        set(cost 1000)
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${limit} COST ${cost} LABELS "${TEST_LABELS}"
        ENVIRONMENT "${environment}")
endfunction()

set(LCD_THREADED_TESTS
    "thread|races|late|guard|listeners|stress|agetest|completemachine|singletests|levelstep|screenb|button|port|tbar")

# The threads of panelhost: the one of the device, those that read the hardware of a board, the one that exports logs,
# and the one that sends run records to a server. The other libraries of panelhost are expensive to build with the
# sanitizer.
set(LCD_THREADED_HOST_TESTS
    "^tst_(virtualclock|services|boardeventloop|boardnetlinks|boardusboverrun|boardslider|boardinputs|postgres)$")

# The tests that wait most of their time: for the clock, a server, or a window. The others use the cores meanwhile.
set(LCD_WAITING_TESTS "^tst_(componentlibrary|postgres.*|statisticspostgres|window|windowplayback)$")

# Where memory is leaked on purpose: Qt loses some if one of its own allocations fails, and so does a process that a
# library ends while it is loaded.
set(LCD_LEAKING_TESTS "allocationfailures|interruptedsessions|commandline|componentlibrary")

# The environment that every test runs in.
set(LCD_TEST_ENVIRONMENT
    "CXX=${CMAKE_CXX_COMPILER}" # for the tests that build something
    QT_QPA_PLATFORM=offscreen
    PANELHOST_RECORDS=none # nothing goes into the user's data directory
    "XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/tests/config" # nor into the settings
    QT_LOGGING_TO_CONSOLE=1
    QT_SCALE_FACTOR=1
    LC_ALL=C.UTF-8
    # umockdev is preloaded. The recording frame of the tests hides the one of the widget library.
    "ASAN_OPTIONS=abort_on_error=0:verify_asan_link_order=0:detect_odr_violation=0"
    "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0"
    "UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1"
    "TSAN_OPTIONS=halt_on_error=1:suppressions=${CMAKE_SOURCE_DIR}/tests/support/tsan.supp")
if(CMAKE_CROSSCOMPILING_EMULATOR)
    list(APPEND LCD_TEST_ENVIRONMENT LCD_EMULATED=1)
endif()
if(LCD_SANITIZE MATCHES "thread")
    list(APPEND LCD_TEST_ENVIRONMENT "LD_PRELOAD=${CMAKE_BINARY_DIR}/tests/qtsynchronization.so")
endif()
