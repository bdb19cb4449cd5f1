lcd_add_test(tst_scenarioloader SOURCES tst_scenarioloader.cpp LIBRARIES panelhost_scenario LABELS host)
lcd_add_test(tst_scenarioplayer SOURCES tst_scenarioplayer.cpp LIBRARIES panelhost_scenario LABELS host)
# The session loads the component at run time.
add_dependencies(tst_scenarioplayer lcdfactorymodeimpl)
lcd_add_test(tst_scenariodoc SOURCES tst_scenariodoc.cpp LIBRARIES panelhost_scenario LcdSdk::widgets LABELS host)
