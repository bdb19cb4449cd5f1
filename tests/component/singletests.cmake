# The single tests and the headers that they share.
add_library(single_test_support STATIC singletestsupport.cpp singletestsupport.h linksession.h)
lcd_test_library(single_test_support)
target_include_directories(single_test_support PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(single_test_support PUBLIC lcdfactorymodeimpl test_support)

foreach(name
        tst_listeners tst_machinerun tst_levelstep tst_callbackguard tst_linkpayload
        tst_screenbadpixelbiz tst_screenbrightnessbiz tst_buttonlightbiz tst_buttonfunctionbiz
        tst_netporttestbiz tst_usbporttestbiz
        tst_singletests tst_lateevents)
    lcd_add_component_test(${name} LIBRARIES single_test_support PROGRAM single_tests)
endforeach()
lcd_add_component_test(tst_tbartestbiz LIBRARIES single_test_support) # defines a member of the component
lcd_add_component_test(tst_netportmemory LIBRARIES single_test_support) # replaces operator new for the whole program
