# Runs PROGRAM and fails unless it ends with 0 and prints exactly the text of the file EXPECTED.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}")
endif()
file(READ ${EXPECTED} expected)
if(NOT printed STREQUAL expected)
    message(FATAL_ERROR "expected:\n${expected}\nprinted:\n${printed}")
endif()
