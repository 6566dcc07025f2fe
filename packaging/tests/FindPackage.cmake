# Configures, builds and runs the consumer as a CMake project of its own.

file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND ${CMAKE_COMMAND} -S "${CONSUMER}" -B "${WORK}" -G "${GENERATOR}"
                        -DCMAKE_PREFIX_PATH=${PREFIX} -DCMAKE_CXX_COMPILER=${CXX}
                        -DCMAKE_BUILD_TYPE=${CONFIG}
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}" --config "${CONFIG}"
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${WORK}/consumer" COMMAND_ERROR_IS_FATAL ANY)
