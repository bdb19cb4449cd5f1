# The complete machine test.

add_library(test_machine OBJECT machinetestfixture.cpp machineoperator.cpp machinepage.cpp)
lcd_test_library(test_machine)
target_link_libraries(test_machine PUBLIC lcdfactorymodeimpl single_test_support test_page test_support test_virtualtime)

foreach(topic testbiz sequence links tbar buttons testwidget run threads races late)
    lcd_add_page_test(tst_completemachine${topic} LIBRARIES test_machine PROGRAM machine_tests)
endforeach()

# Replaces pthread_mutex_lock(), as the thread sanitizer does.
if(NOT LCD_SANITIZE STREQUAL "thread")
    lcd_add_page_test(tst_completemachineinterleavings)
    target_link_libraries(tst_completemachineinterleavings PRIVATE test_machine ${CMAKE_DL_LIBS})
endif()

# The statements of docs/behavior.md.
add_library(test_behaviorpage STATIC behaviorpage.cpp behaviorpage.h)
lcd_test_library(test_behaviorpage)
target_include_directories(test_behaviorpage PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_compile_definitions(test_behaviorpage PRIVATE "LCD_SOURCE_DIR=\"${CMAKE_SOURCE_DIR}\"")
target_link_libraries(test_behaviorpage PUBLIC Qt5::Core)

lcd_add_page_test(tst_behaviorpage LIBRARIES test_behaviorpage PROGRAM behavior_tests)
lcd_add_page_test(tst_behaviortables LIBRARIES test_machine test_behaviorpage PROGRAM behavior_tests)
lcd_add_page_test(tst_behaviormachine LIBRARIES test_machine PROGRAM behavior_tests)
lcd_add_page_test(tst_behavioraging LIBRARIES age_test_support PROGRAM behavior_tests)

# Every allocation of a report, a row or a page fails once. Replaces operator new for the whole program.
lcd_add_page_test(tst_allocationfailures SOURCES ../support/failingmemory.cpp LIBRARIES age_test_support test_machine)

# Sessions in which a service throws or an allocation fails.
lcd_add_page_test(tst_interruptedsessions SOURCES ../support/failingmemory.cpp LIBRARIES age_test_support test_machine)

# Long sessions in virtual time.
lcd_add_page_test(tst_soak LIBRARIES test_machine PROGRAM behavior_tests)
