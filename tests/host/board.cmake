# The board: tests of its parts on mock devices. Their names contain "board".

# lcd_add_board_test(<name>): a test in board/<name>.cpp.
function(lcd_add_board_test name)
    lcd_add_test(${name} SOURCES board/${name}.cpp LIBRARIES panelhost_base LABELS board)
endfunction()

lcd_add_board_test(tst_boardeventloop)
lcd_add_board_test(tst_boardnetlinks)
lcd_add_board_test(tst_boardusboverrun)

# Mock devices: the programs run under umockdev-wrapper, which shows them a /sys, a /dev and a udev of their own.
find_package(PkgConfig REQUIRED)
find_program(UMOCKDEV_WRAPPER umockdev-wrapper)
pkg_check_modules(UMOCKDEV IMPORTED_TARGET umockdev-1.0)

# lcd_add_mock_board_test(<name>): a test in board/<name>.cpp that uses mock devices.
function(lcd_add_mock_board_test name)
    if(NOT UMOCKDEV_WRAPPER OR NOT UMOCKDEV_FOUND)
        message(STATUS "${name} isn't built: libumockdev-dev and umockdev aren't installed.")
        return()
    endif()
    lcd_add_test(${name} SOURCES board/${name}.cpp WRAPPER "${UMOCKDEV_WRAPPER}"
        LIBRARIES board_mocks panelhost_base LABELS board)
endfunction()

if(UMOCKDEV_FOUND)
    add_library(board_mocks STATIC board/mockinput.cpp board/mockinput.h)
    lcd_target(board_mocks)
    target_include_directories(board_mocks PUBLIC board)
    target_link_libraries(board_mocks PUBLIC Qt5::Core PkgConfig::UMOCKDEV)
endif()

lcd_add_mock_board_test(tst_boardevdev)
lcd_add_mock_board_test(tst_boardslider)
lcd_add_mock_board_test(tst_boardoutputs)
lcd_add_mock_board_test(tst_boardconformance)
if(TARGET tst_boardconformance)
    target_include_directories(tst_boardconformance PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
endif()
# Test patterns on an X server with two outputs. Qt reads the X server on a thread whose locks the thread sanitizer
# doesn't see.
if(NOT LCD_SANITIZE STREQUAL "thread")
    lcd_add_board_test(tst_boardpatterns)
    target_link_libraries(tst_boardpatterns PRIVATE panelhost_panel)
    set_tests_properties(tst_boardpatterns PROPERTIES SKIP_RETURN_CODE 77)
endif()
lcd_add_mock_board_test(tst_boardusbports)
lcd_add_mock_board_test(tst_boardinputs)
lcd_add_mock_board_test(tst_boardslow)
if(TARGET tst_boardslow)
    add_dependencies(tst_boardslow lcdfactorymodeimpl share_files)
endif()
lcd_add_board_test(tst_boardprofile)
target_link_libraries(tst_boardprofile PRIVATE panelhost_scenario)

# Complete sessions, which load the component at run time.
lcd_add_board_test(tst_boardlatency)
add_dependencies(tst_boardlatency lcdfactorymodeimpl share_files)

if(VALIJSON_INCLUDE_DIR)
    lcd_add_board_test(tst_boardinputprofile)
    target_link_libraries(tst_boardinputprofile PRIVATE panelhost_scenario)
    target_include_directories(tst_boardinputprofile SYSTEM PRIVATE "${VALIJSON_INCLUDE_DIR}")
endif()

# Sessions on a whole board, with an operator whose hands are mock hardware.
if(TARGET board_mocks)
    lcd_add_mock_board_test(tst_boardrecording)
    set_tests_properties(tst_boardrecording PROPERTIES TIMEOUT 300 COST 300)
    target_sources(tst_boardrecording PRIVATE board/hardwareoperator.cpp board/hardwareoperator.h)
    target_link_libraries(tst_boardrecording PRIVATE panelhost_scenario)
    target_include_directories(tst_boardrecording PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}" ../support)
    add_dependencies(tst_boardrecording lcdfactorymodeimpl repairpages share_files)
    # What "./run board-demo" shows.
    add_test(NAME boarddemo COMMAND "${CMAKE_SOURCE_DIR}/tools/board-demo" "${CMAKE_BINARY_DIR}"
        "${CMAKE_BINARY_DIR}/tests/board-demo")
    set_tests_properties(boarddemo PROPERTIES LABELS board TIMEOUT 300 COST 300 SKIP_RETURN_CODE 77
        ENVIRONMENT "${LCD_TEST_ENVIRONMENT}")
endif()

# panelhost itself on mock hardware.
lcd_add_mock_board_test(tst_boardprocess)
if(TARGET tst_boardprocess)
    target_compile_definitions(tst_boardprocess PRIVATE "PANELHOST=\"$<TARGET_FILE:panelhost>\"")
    add_dependencies(tst_boardprocess panelhost lcdfactorymodeimpl repairpages share_files)
endif()
