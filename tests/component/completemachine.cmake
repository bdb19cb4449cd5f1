# The complete machine test.

add_library(test_machine OBJECT machinetestfixture.cpp machineoperator.cpp machinepage.cpp)
lcd_test_library(test_machine)
target_link_libraries(test_machine PUBLIC lcdfactorymodeimpl single_test_support test_page test_support test_virtualtime)

foreach(topic testbiz sequence links tbar buttons testwidget run threads races late)
    lcd_add_page_test(tst_completemachine${topic})
    target_link_libraries(tst_completemachine${topic} PRIVATE test_machine)
endforeach()

# Replaces pthread_mutex_lock(), as the thread sanitizer does.
if(NOT LCD_SANITIZE STREQUAL "thread")
    lcd_add_page_test(tst_completemachineinterleavings)
    target_link_libraries(tst_completemachineinterleavings PRIVATE test_machine ${CMAKE_DL_LIBS})
endif()

# The statements of docs/behavior.md.
add_library(test_behaviorpage STATIC behaviorpage.cpp behaviorpage.h)
lcd_target(test_behaviorpage)
target_include_directories(test_behaviorpage PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_compile_definitions(test_behaviorpage PRIVATE "LCD_SOURCE_DIR=\"${CMAKE_SOURCE_DIR}\"")
target_link_libraries(test_behaviorpage PUBLIC Qt5::Core)

lcd_add_test(tst_behaviorpage SOURCES tst_behaviorpage.cpp LABELS component LIBRARIES test_behaviorpage NO_WIDGETS)
lcd_add_page_test(tst_behaviortables)
target_link_libraries(tst_behaviortables PRIVATE test_machine test_behaviorpage)
lcd_add_page_test(tst_behaviormachine)
target_link_libraries(tst_behaviormachine PRIVATE test_machine)
lcd_add_page_test(tst_behavioraging)
target_link_libraries(tst_behavioraging PRIVATE age_test_support)

# Every allocation of a report, a row or a page fails once. Replaces operator new for the whole program.
lcd_add_page_test(tst_allocationfailures SOURCES ../support/failingmemory.cpp)
target_link_libraries(tst_allocationfailures PRIVATE age_test_support test_machine)

# Sessions in which a service throws or an allocation fails.
lcd_add_page_test(tst_interruptedsessions SOURCES ../support/failingmemory.cpp)
target_link_libraries(tst_interruptedsessions PRIVATE age_test_support test_machine)

# Long sessions in virtual time.
lcd_add_page_test(tst_soak)
target_link_libraries(tst_soak PRIVATE test_machine)
