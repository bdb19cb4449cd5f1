# The aging test, and the function that adds a test of a page.

# lcd_add_page_test(<name> [<options of lcd_add_test...>]): a component test in virtual time in which the component finds
# a recording frame and a translation that returns the key.
function(lcd_add_page_test name)
    lcd_add_component_test(${name} EXPORTS LIBRARIES test_page test_virtualtime ${ARGN})
endfunction()

add_library(age_test_support STATIC agetestfixture.cpp agetestfixture.h agecalls.cpp agecalls.h)
lcd_test_library(age_test_support)
target_include_directories(age_test_support PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(age_test_support PUBLIC lcdfactorymodeimpl test_support)

foreach(topic biz links biztext timeline threads)
    lcd_add_page_test(tst_agetest${topic} LIBRARIES age_test_support PROGRAM age_tests)
endforeach()
lcd_add_page_test(tst_agetestwidget PROGRAM age_tests)
lcd_add_page_test(tst_testpages PROGRAM age_tests)
lcd_add_component_test(tst_levelsuffix PROGRAM file_tests)

# The test pages with the real menu and the real frame.
lcd_add_component_test(tst_pagesinmenu SOURCES machineoperator.cpp
    LIBRARIES menu_test_support single_test_support test_virtualtime DIRECTORY tst_pagesinmenu.dir/bin)
