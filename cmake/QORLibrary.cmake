# The shape that all our shared libraries have: names, folders, installation.

set(QOR_CONFIG_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/${PROJECT_NAME}")

# Makes the shared library QOR::<name>, in a file called QOR.<name>, from `src` and `include` of
# the current folder, and installs it with its headers. Further arguments are the libraries that
# its headers lean on.
function(qor_add_library name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS src/*.cpp src/*.h include/*.h)
  set(target QOR${name})
  add_library(${target} SHARED ${sources})
  add_library(QOR::${name} ALIAS ${target})
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>
           $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    PRIVATE src)
  target_link_libraries(${target} PUBLIC ${ARGN})
  qor_set_warnings(${target})
  # Calls between our own functions are direct: nobody replaces one of them from outside, and a
  # change of a value makes several.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  endif()
  if(UNIX AND NOT APPLE)
    target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  endif()
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME QOR.${name}
    EXPORT_NAME ${name}
    VERSION ${PROJECT_VERSION}
    # Before 1.0 a new minor version may break the binary interface.
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    INSTALL_RPATH $ORIGIN         # an install tree can be moved: our libraries lie side by side
    WINDOWS_EXPORT_ALL_SYMBOLS ON # there QOR_API is empty
    LINKER_LANGUAGE CXX)

  install(TARGETS ${target} EXPORT ${PROJECT_NAME}Targets
          RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
          FILES_MATCHING PATTERN "*.h")

  if(QOR_BUILD_TESTS AND NOT QOR_SANITIZE AND NOT CMAKE_CROSSCOMPILING)
    qor_check_headers_alone(${target})
  endif()
endfunction()
