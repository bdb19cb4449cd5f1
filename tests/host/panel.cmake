# The window's parts, each drawn and touched by itself.
add_library(panel_fixture STATIC panel/panelfixture.cpp panel/panelfixture.h)
lcd_test_library(panel_fixture MOC)
target_include_directories(panel_fixture PUBLIC panel)
target_link_libraries(panel_fixture PUBLIC panelhost_core)

foreach(name keybutton panelcontrols frontpanel journalview todayview panelgolden)
    lcd_add_test(tst_${name} SOURCES panel/tst_${name}.cpp LIBRARIES panel_fixture LABELS host panel PROGRAM panel_tests)
endforeach()

lcd_add_test(tst_unitbar SOURCES panel/tst_unitbar.cpp LIBRARIES panel_fixture LABELS host panel PROGRAM panel_tests)
add_dependencies(tst_unitbar lcdfactorymodeimpl share_files)
lcd_add_test(tst_panelwindow SOURCES panel/tst_panelwindow.cpp LIBRARIES panel_fixture LABELS host panel PROGRAM panel_tests)
# On a screen with twice the resolution.
get_property(window_command GLOBAL PROPERTY LCD_COMMAND_tst_panelwindow)
add_test(NAME tst_panelwindow_scaled COMMAND ${window_command} nothingWidensTheWindow docksGetWhatThePanelCannotUse)
set_tests_properties(tst_panelwindow_scaled PROPERTIES TIMEOUT 120 LABELS "host;panel"
    ENVIRONMENT "${LCD_TEST_ENVIRONMENT};QT_SCALE_FACTOR=2")
lcd_add_test(tst_historywindow SOURCES panel/tst_historywindow.cpp LIBRARIES panel_fixture LABELS host panel PROGRAM panel_tests)
add_dependencies(tst_historywindow lcdfactorymodeimpl repairpages share_files)
add_dependencies(tst_panelwindow lcdfactorymodeimpl share_files)
lcd_add_test(tst_windowplayback SOURCES panel/tst_windowplayback.cpp LIBRARIES panel_fixture LABELS host panel PROGRAM panel_tests)
add_dependencies(tst_windowplayback lcdfactorymodeimpl repairpages share_files)
lcd_add_test(tst_windowlanguage SOURCES panel/tst_windowlanguage.cpp LIBRARIES panel_fixture Qt5::Xml LABELS host panel PROGRAM panel_tests)
add_dependencies(tst_windowlanguage lcdfactorymodeimpl repairpages share_files)

# The pictures of the documents; see tools/screenshots.
add_executable(windowshots panel/windowshots.cpp)
lcd_test_library(windowshots)
target_link_libraries(windowshots PRIVATE panelhost_core)
target_compile_definitions(windowshots PRIVATE "LCD_SOURCE_DIR=\"${CMAKE_SOURCE_DIR}\""
    "LCD_BUILD_DIR=\"${CMAKE_BINARY_DIR}\"")
add_dependencies(windowshots panelhost lcdfactorymodeimpl repairpages share_files)
