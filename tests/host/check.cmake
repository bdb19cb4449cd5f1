lcd_add_test(tst_check SOURCES tst_check.cpp LIBRARIES panelhost_core LABELS host)
