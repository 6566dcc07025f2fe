# Runs PROGRAM and fails unless it succeeds and prints what the file EXPECTED says.

execute_process(COMMAND "${PROGRAM}" RESULT_VARIABLE result OUTPUT_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} gives ${result}:\n${output}")
endif()
string(REPLACE "\r\n" "\n" output "${output}")
file(READ "${EXPECTED}" expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "it prints\n${output}\nand not what ${EXPECTED} says:\n${expected}")
endif()
