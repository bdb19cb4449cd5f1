# Plays SCENARIO with PANELHOST RUNS times and compares its journal with GOLDEN, byte for byte. The journal of the run
# that differs stays in OUTPUT.

foreach(run RANGE 1 ${RUNS})
    execute_process(COMMAND "${PANELHOST}" play "${SCENARIO}" --journal "${OUTPUT}"
        RESULT_VARIABLE status OUTPUT_VARIABLE told ERROR_VARIABLE told)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${SCENARIO} ends with ${status}:\n${told}")
    endif()
    execute_process(COMMAND diff -u --label "golden ${GOLDEN}" --label "played ${OUTPUT}" "${GOLDEN}" "${OUTPUT}"
        RESULT_VARIABLE differs OUTPUT_VARIABLE difference ERROR_VARIABLE difference)
    if(NOT differs EQUAL 0)
        message(FATAL_ERROR "The journal of run ${run} differs. If the change is meant, renew it with "
            "tests/e2e/renew-journals.\n${difference}")
    endif()
endforeach()
