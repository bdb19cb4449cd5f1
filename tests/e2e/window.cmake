# The window on an X server of its own, touched by xdotool. Without the two programs the tests are skipped.
# Qt reads the X server on a thread whose locks the thread sanitizer doesn't see.
if(LCD_SANITIZE STREQUAL "thread")
    return()
endif()
add_library(window_e2e STATIC window/xserver.cpp window/xserver.h window/panelprocess.cpp window/panelprocess.h)
lcd_test_library(window_e2e)
target_include_directories(window_e2e PUBLIC window)
target_compile_definitions(window_e2e PRIVATE "LCD_BUILD_DIR=\"${CMAKE_BINARY_DIR}\"")
target_link_libraries(window_e2e PUBLIC Qt5::Core Qt5::Test)

lcd_add_test(tst_killedwindow SOURCES window/tst_killedwindow.cpp LIBRARIES window_e2e panelhost_records LABELS e2e
    records TIMEOUT 300 INCLUDES ../support PROGRAM e2e_tests)
add_dependencies(tst_killedwindow panelhost lcdfactorymodeimpl repairpages share_files)
set_tests_properties(tst_killedwindow PROPERTIES SKIP_RETURN_CODE 77)

foreach(name window record repairwindow)
    lcd_add_test(tst_${name} SOURCES window/tst_${name}.cpp LIBRARIES window_e2e LABELS e2e TIMEOUT 300
        PROGRAM e2e_tests)
    add_dependencies(tst_${name} panelhost lcdfactorymodeimpl repairpages share_files)
    set_tests_properties(tst_${name} PROPERTIES SKIP_RETURN_CODE 77)
endforeach()
