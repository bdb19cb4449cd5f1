# The complete machine test.

function(lcd_add_machine_test name)
    lcd_add_page_test(${name} SOURCES machinebench.cpp singletestsupport.cpp ${ARGN})
endfunction()

lcd_add_machine_test(tst_completemachinetestbiz)
lcd_add_machine_test(tst_completemachinephases)
lcd_add_machine_test(tst_completemachinelinks)
lcd_add_machine_test(tst_completemachinebuttons)
