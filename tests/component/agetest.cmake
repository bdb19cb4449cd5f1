# The aging test, and the function that adds a test of a page.

# lcd_add_page_test(<name> [SOURCES <more files...>]): a component test in virtual time in which the component finds a
# recording frame and a translation that returns the key.
function(lcd_add_page_test name)
    lcd_add_component_test(${name} ${ARGN} LIBRARIES test_page test_virtualtime)
    set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON)
endfunction()

add_library(age_test_support STATIC agetestfixture.cpp agetestfixture.h agecalls.cpp agecalls.h)
lcd_test_library(age_test_support)
target_include_directories(age_test_support PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(age_test_support PUBLIC lcdfactorymodeimpl test_support)

foreach(topic biz links biztext timeline threads)
    lcd_add_page_test(tst_agetest${topic})
    target_link_libraries(tst_agetest${topic} PRIVATE age_test_support)
endforeach()
lcd_add_page_test(tst_agetestwidget)
lcd_add_page_test(tst_testpages)
lcd_add_component_test(tst_levelsuffix)

# The test pages with the real menu and the real frame.
lcd_add_component_test(tst_pagesinmenu SOURCES machineoperator.cpp
    LIBRARIES menu_test_support single_test_support test_virtualtime)
set_target_properties(tst_pagesinmenu PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests/tst_pagesinmenu.dir/bin")
