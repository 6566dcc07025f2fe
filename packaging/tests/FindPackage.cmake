# Configures, builds and runs the consumer as a CMake project of its own.

file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND ${CMAKE_COMMAND} -S "${CONSUMER}" -B "${WORK}" -G "${GENERATOR}"
                        -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_CXX_COMPILER=${CXX}
                        -DCMAKE_BUILD_TYPE=${CONFIG} -DWITH_SQLITE=${WITH_SQLITE}
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}" --config "${CONFIG}"
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${WORK}/consumer" COMMAND_ERROR_IS_FATAL ANY)
if(WITH_SQLITE)
  execute_process(COMMAND "${WORK}/store_consumer" "${WORK}/store.db" COMMAND_ERROR_IS_FATAL ANY)
endif()
