lcd_add_test(tst_check SOURCES tst_check.cpp LIBRARIES panelhost_scenario LABELS host PROGRAM scenario_tests)
lcd_add_test(tst_checkwords SOURCES tst_checkwords.cpp LIBRARIES panelhost_scenario lcdfactorymodeimpl LABELS host)
