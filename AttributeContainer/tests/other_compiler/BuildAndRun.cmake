# Builds SOURCE with the compiler CXX against LIBRARIES, and runs it. It must say nothing.

list(TRANSFORM INCLUDES PREPEND -I)
set(flags -std=c++20 ${INCLUDES} "${SOURCE}" -o "${PROGRAM}" ${LIBRARIES})
foreach(library IN LISTS LIBRARIES)
  cmake_path(GET library PARENT_PATH folder)
  list(APPEND flags "-Wl,-rpath,${folder}")
endforeach()
execute_process(COMMAND "${CXX}" ${flags} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${PROGRAM}" ERROR_VARIABLE complaints COMMAND_ERROR_IS_FATAL ANY)
if(complaints)
  message(FATAL_ERROR "${complaints}")
endif()
