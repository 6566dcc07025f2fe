# Builds the consumer with the flags of pkg-config, as a plain makefile would, and runs it.

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
execute_process(COMMAND pkg-config --cflags --libs QORAttributeContainer
                OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE
                COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
# The flags follow the source: libraries are searched for what stands in front of them.
execute_process(COMMAND "${CXX}" -std=c++20 "${CONSUMER}/main.cpp" -o "${WORK}/consumer" ${flags}
                        "-Wl,-rpath,${PREFIX}/${LIBDIR}"
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${WORK}/consumer" COMMAND_ERROR_IS_FATAL ANY)
