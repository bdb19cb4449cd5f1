# The factory menu: entry points, configuration files, lists, keys and rows.
add_library(menu_test_support STATIC menufixture.cpp menufixture.h)
lcd_test_library(menu_test_support)
target_include_directories(menu_test_support PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(menu_test_support PUBLIC lcdfactorymodeimpl test_support Qt5::Xml)

# lcd_add_menu_test(<name> [<options of lcd_add_test...>]): a component test with a share directory of its own at bin/../share, in which the
# component finds a recording frame and a translation that returns the key.
function(lcd_add_menu_test name)
    lcd_add_component_test(${name} EXPORTS DIRECTORY ${name}.dir/bin LIBRARIES menu_test_support test_page ${ARGN})
endfunction()

foreach(name
        tst_factorymenuconfigparser tst_factorykeychecklistconfigparser
        tst_factorymodewidget tst_factorymodenavigation tst_factorymodepages
        tst_factorymodeitemdelegate tst_menulog)
    lcd_add_menu_test(${name} PROGRAM menu_tests)
endforeach()
lcd_add_menu_test(tst_mirelcomp) # replaces operator new for the whole program

# The symbols of the built library, and hostile files that must not take much memory.
lcd_add_component_test(tst_librarysymbols PROGRAM file_tests)
add_dependencies(tst_librarysymbols lcdfactorymodeimpl)
lcd_add_component_test(tst_sharedconstants PROGRAM file_tests)
# Reads each file in a forked child process with a thread, which the thread sanitizer doesn't support.
if(NOT LCD_SANITIZE STREQUAL "thread")
    lcd_add_component_test(tst_xmllimits LIBRARIES menu_test_support PROGRAM file_tests)
endif()
lcd_add_component_test(tst_xmldifference LIBRARIES menu_test_support PROGRAM file_tests)
lcd_add_component_test(tst_sharefiles LIBRARIES menu_test_support PROGRAM file_tests)
add_dependencies(tst_sharefiles share_files)

# The sanitizers replace the heap.
if(NOT LCD_SANITIZE)
    lcd_add_component_test(tst_componentmemory)
endif()
