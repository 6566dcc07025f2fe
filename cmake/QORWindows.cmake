# What a build for Windows on another system needs: everything that its programs load lies beside
# them, so that they start from there.

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
if(MINGW AND CMAKE_CROSSCOMPILING)
  foreach(runtime IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
                    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT EXISTS "${file}")
      message(FATAL_ERROR "${CMAKE_CXX_COMPILER} comes without ${runtime}")
    endif()
    file(COPY "${file}" DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  endforeach()
endif()
