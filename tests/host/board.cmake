# The board: tests of its parts on mock devices. Their names contain "board".

# lcd_add_board_test(<name> [<options of lcd_add_test...>]): a test in board/<name>.cpp.
function(lcd_add_board_test name)
    lcd_add_test(${name} SOURCES board/${name}.cpp LABELS board LIBRARIES panelhost_base ${ARGN})
endfunction()

lcd_add_board_test(tst_boardeventloop PROGRAM board_tests)
lcd_add_board_test(tst_boardnetlinks PROGRAM board_tests)
lcd_add_board_test(tst_boardusboverrun PROGRAM board_tests)

# Mock devices: the programs run under umockdev-wrapper, which shows them a /sys, a /dev and a udev of their own.
find_package(PkgConfig REQUIRED)
find_program(UMOCKDEV_WRAPPER umockdev-wrapper)
pkg_check_modules(UMOCKDEV IMPORTED_TARGET umockdev-1.0)

# lcd_add_mock_board_test(<name> [<options of lcd_add_board_test...>]): a test in board/<name>.cpp that uses mock devices.
function(lcd_add_mock_board_test name)
    if(NOT UMOCKDEV_WRAPPER OR NOT UMOCKDEV_FOUND)
        message(STATUS "${name} isn't built: libumockdev-dev and umockdev aren't installed.")
        return()
    endif()
    lcd_add_board_test(${name} WRAPPER "${UMOCKDEV_WRAPPER}" LIBRARIES board_mocks ${ARGN})
endfunction()

if(UMOCKDEV_FOUND)
    add_library(board_mocks STATIC board/mockinput.cpp board/mockinput.h)
    lcd_test_library(board_mocks)
    target_include_directories(board_mocks PUBLIC board)
    target_link_libraries(board_mocks PUBLIC Qt5::Core PkgConfig::UMOCKDEV)
endif()

lcd_add_mock_board_test(tst_boardevdev PROGRAM board_tests)
lcd_add_mock_board_test(tst_boardslider) # replaces fsync() for the whole program
lcd_add_mock_board_test(tst_boardoutputs PROGRAM board_tests)
lcd_add_mock_board_test(tst_boardconformance INCLUDES "${CMAKE_CURRENT_SOURCE_DIR}" PROGRAM board_tests)
# Test patterns on an X server with two outputs. Qt reads the X server on a thread whose locks the thread sanitizer
# doesn't see.
if(NOT LCD_SANITIZE STREQUAL "thread")
    lcd_add_board_test(tst_boardpatterns LIBRARIES panelhost_panel PROGRAM board_tests)
    set_tests_properties(tst_boardpatterns PROPERTIES SKIP_RETURN_CODE 77)
endif()
lcd_add_mock_board_test(tst_boardusbports PROGRAM board_tests)
lcd_add_mock_board_test(tst_boardinputs PROGRAM board_tests)
lcd_add_mock_board_test(tst_boardslow PROGRAM board_tests)
if(TARGET tst_boardslow)
    add_dependencies(tst_boardslow lcdfactorymodeimpl share_files)
endif()
lcd_add_board_test(tst_boardprofile LIBRARIES panelhost_scenario PROGRAM board_tests)

# Complete sessions, which load the component at run time.
lcd_add_board_test(tst_boardlatency PROGRAM board_tests)
add_dependencies(tst_boardlatency lcdfactorymodeimpl share_files)

if(TARGET valijson)
    lcd_add_board_test(tst_boardinputprofile LIBRARIES panelhost_scenario valijson PROGRAM board_tests)
endif()

# Sessions on a whole board, with an operator whose hands are mock hardware.
if(TARGET board_mocks)
    lcd_add_mock_board_test(tst_boardrecording SOURCES board/hardwareoperator.cpp board/hardwareoperator.h
        LIBRARIES panelhost_scenario INCLUDES "${CMAKE_CURRENT_SOURCE_DIR}" ../support PROGRAM board_tests)
    set_tests_properties(tst_boardrecording PROPERTIES TIMEOUT 300 COST 2000) # waits longest
    add_dependencies(tst_boardrecording lcdfactorymodeimpl repairpages share_files)
    # What "./run board-demo" shows.
    add_test(NAME boarddemo COMMAND "${CMAKE_SOURCE_DIR}/tools/board-demo" "${CMAKE_BINARY_DIR}"
        "${CMAKE_BINARY_DIR}/tests/board-demo")
    set_tests_properties(boarddemo PROPERTIES LABELS board TIMEOUT 300 COST 300 SKIP_RETURN_CODE 77
        ENVIRONMENT "${LCD_TEST_ENVIRONMENT}")
endif()

# panelhost itself on mock hardware.
lcd_add_mock_board_test(tst_boardprocess DEFINITIONS "PANELHOST=\"$<TARGET_FILE:panelhost>\"" INCLUDES ../support
    PROGRAM board_tests)
if(TARGET tst_boardprocess)
    add_dependencies(tst_boardprocess panelhost lcdfactorymodeimpl repairpages share_files)
endif()
