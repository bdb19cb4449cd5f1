# The complete machine test.

add_library(test_machine OBJECT machinebench.cpp machineoperator.cpp machinepage.cpp singletestsupport.cpp)
lcd_target(test_machine)
target_link_libraries(test_machine PUBLIC lcdfactorymodeimpl test_page test_support test_virtualtime)

foreach(topic testbiz phases links buttons testwidget run threads late)
    lcd_add_page_test(tst_completemachine${topic})
    target_link_libraries(tst_completemachine${topic} PRIVATE test_machine)
endforeach()
