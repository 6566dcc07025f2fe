# Builds the consumer with the flags of pkg-config, as a plain makefile would, and runs it.

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")

# Builds the program `name` from `source` with the flags of `package`, and runs it with the rest.
function(build_and_run name source package)
  execute_process(COMMAND pkg-config --cflags --libs ${package}
                  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  # The flags follow the source: libraries are searched for what stands in front of them.
  execute_process(COMMAND "${CXX}" -std=c++20 "${CONSUMER}/${source}" -o "${WORK}/${name}" ${flags}
                          "-Wl,-rpath,${PREFIX}/${LIBDIR}"
                  COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND "${WORK}/${name}" ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

build_and_run(consumer main.cpp QORAttributeContainer)
if(WITH_SQLITE)
  build_and_run(store_consumer store.cpp QORKeyStoreSqlite "${WORK}/store.db")
endif()
