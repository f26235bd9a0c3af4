# Runs one scenario file through the runner and compares the output with the expected file.
# A difference fails the test and shows both, so that an intended change is copied over by hand.
execute_process(COMMAND ${RUNNER} INPUT_FILE ${INPUT} OUTPUT_FILE ${OUTPUT} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "tovi_scenario exited with ${status} on ${INPUT}")
endif()
file(READ ${OUTPUT} actual)
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  message(FATAL_ERROR "scenario output differs from ${EXPECTED}\n--- actual (${OUTPUT})\n${actual}\n--- expected\n${expected}")
endif()
