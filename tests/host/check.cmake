lcd_add_test(tst_check SOURCES tst_check.cpp LIBRARIES panelhost_core LABELS host)
lcd_add_test(tst_checkwords SOURCES tst_checkwords.cpp LIBRARIES panelhost_core lcdfactorymodeimpl LABELS host)
