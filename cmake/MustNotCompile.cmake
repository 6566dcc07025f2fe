# Runs the compiler command after `--` and fails unless the compiler refuses the source with an
# error that matches REGEX. The source's own lines, which compilers quote, do not count.

set(command)
foreach(i RANGE 1 ${CMAKE_ARGC})
  if(in_command AND i LESS CMAKE_ARGC)
    list(APPEND command "${CMAKE_ARGV${i}}")
  elseif("${CMAKE_ARGV${i}}" STREQUAL "--")
    set(in_command TRUE)
  endif()
endforeach()

set(ENV{LC_ALL} C)  # messages in English, quotes in ASCII
execute_process(COMMAND ${command} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result EQUAL 0)
  message(FATAL_ERROR "it compiles, but must not")
endif()

string(REGEX MATCHALL "error: [^\n]*" errors "${output}")
foreach(error IN LISTS errors)
  if(error MATCHES "${REGEX}")
    message(STATUS "refused as it should be: ${error}")
    return()
  endif()
endforeach()
message(FATAL_ERROR "it does not compile, but no error matches '${REGEX}':\n${output}")
