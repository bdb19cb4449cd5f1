lcd_add_test(tst_scenarioloader SOURCES tst_scenarioloader.cpp LIBRARIES panelhost_scenario LABELS host PROGRAM scenario_tests)
lcd_add_test(tst_scenarioplayer SOURCES tst_scenarioplayer.cpp LIBRARIES panelhost_scenario LABELS host PROGRAM scenario_tests)
lcd_add_test(tst_sessionhistory SOURCES tst_sessionhistory.cpp LIBRARIES panelhost_scenario LABELS host
    INCLUDES ../support PROGRAM scenario_tests)
lcd_add_test(tst_devicefaults SOURCES tst_devicefaults.cpp LIBRARIES panelhost_scenario LABELS host
    INCLUDES ../support PROGRAM scenario_tests TIMEOUT 300)
lcd_add_test(tst_lcdlanguages SOURCES tst_lcdlanguages.cpp LIBRARIES panelhost_scenario LABELS host PROGRAM scenario_tests)
add_dependencies(tst_lcdlanguages lcdfactorymodeimpl repairpages share_files)
# The session loads the component at run time.
add_dependencies(tst_devicefaults lcdfactorymodeimpl share_files)
add_dependencies(tst_scenarioplayer lcdfactorymodeimpl share_files)
add_dependencies(tst_sessionhistory lcdfactorymodeimpl repairpages share_files)
lcd_add_test(tst_scenariodoc SOURCES tst_scenariodoc.cpp LIBRARIES panelhost_scenario LcdSdk::widgets LABELS host PROGRAM scenario_tests)
# The schema is read by a library of headers.
find_path(VALIJSON_INCLUDE_DIR valijson/schema.hpp)
if(VALIJSON_INCLUDE_DIR)
    add_library(valijson INTERFACE IMPORTED)
    target_include_directories(valijson INTERFACE "${VALIJSON_INCLUDE_DIR}")
    lcd_add_test(tst_scenarioschema SOURCES tst_scenarioschema.cpp LIBRARIES panelhost_scenario valijson LABELS host
        PROGRAM scenario_tests)
else()
    message(STATUS "tst_scenarioschema isn't built: libvalijson-dev isn't installed.")
endif()
