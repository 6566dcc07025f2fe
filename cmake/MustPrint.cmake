# Runs PROGRAM and fails unless it ends well and prints what stands in the file EXPECTED, if there
# is one.

execute_process(COMMAND "${PROGRAM}" RESULT_VARIABLE result OUTPUT_VARIABLE printed)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "it ended with '${result}' and printed:\n${printed}")
endif()
if(NOT EXPECTED)
  return()
endif()
file(READ "${EXPECTED}" expected)
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "it prints:\n${printed}\nand not:\n${expected}")
endif()
