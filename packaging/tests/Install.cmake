# Lays the install tree, from nothing, so that a file of a former run cannot pass for a new one.
# It is installed under one name and moved to another: no path of the machine may stay in it.

file(REMOVE_RECURSE "${PREFIX}" "${WORK}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_TREE}" --config "${CONFIG}"
                        --prefix "${WORK}" COMMAND_ERROR_IS_FATAL ANY)
file(RENAME "${WORK}" "${PREFIX}")
