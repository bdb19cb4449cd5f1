lcd_add_test(tst_scenarioloader SOURCES tst_scenarioloader.cpp LIBRARIES panelhost_scenario LABELS host)
lcd_add_test(tst_scenarioplayer SOURCES tst_scenarioplayer.cpp LIBRARIES panelhost_scenario LABELS host)
# The session loads the component at run time.
add_dependencies(tst_scenarioplayer lcdfactorymodeimpl share_files)
lcd_add_test(tst_scenariodoc SOURCES tst_scenariodoc.cpp LIBRARIES panelhost_scenario LcdSdk::widgets LABELS host)
# The schema is read by a library of headers.
find_path(VALIJSON_INCLUDE_DIR valijson/schema.hpp)
if(VALIJSON_INCLUDE_DIR)
    lcd_add_test(tst_scenarioschema SOURCES tst_scenarioschema.cpp LIBRARIES panelhost_scenario LABELS host)
    target_include_directories(tst_scenarioschema SYSTEM PRIVATE "${VALIJSON_INCLUDE_DIR}")
else()
    message(STATUS "tst_scenarioschema isn't built: libvalijson-dev isn't installed.")
endif()
