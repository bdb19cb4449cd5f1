# The aging test, and the function that adds a test of a page.

# lcd_add_page_test(<name> [SOURCES <more files...>]): a component test in virtual time in which the component finds a
# recording frame and a translation that returns the key.
function(lcd_add_page_test name)
    lcd_add_component_test(${name} ${ARGN} LIBRARIES test_page test_virtualtime)
    set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON)
endfunction()

lcd_add_page_test(tst_agetestbiz SOURCES agetestfixture.cpp agecalls.cpp)
lcd_add_page_test(tst_agetestlinks SOURCES agetestfixture.cpp agecalls.cpp)
lcd_add_page_test(tst_agetestbiztext SOURCES agetestfixture.cpp)
lcd_add_page_test(tst_agetesttimeline SOURCES agetestfixture.cpp)
lcd_add_page_test(tst_agetestwidget)
lcd_add_page_test(tst_agetestthreads SOURCES agetestfixture.cpp)
lcd_add_page_test(tst_testpages)
lcd_add_component_test(tst_levelsuffix)

# The test pages with the real menu and the real frame.
lcd_add_component_test(tst_pagesinmenu SOURCES machineoperator.cpp singletestsupport.cpp
    LIBRARIES menu_test_support test_virtualtime)
set_target_properties(tst_pagesinmenu PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests/tst_pagesinmenu.dir/bin")
