# What the tests are made with: suites of GoogleTest, sources that must not compile, headers that
# must compile alone.

if(CMAKE_CROSSCOMPILING)
  # Debian has GoogleTest as sources too: made here for the other system.
  set(INSTALL_GTEST OFF)
  set(BUILD_GMOCK OFF)
  add_subdirectory(/usr/src/googletest "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
else()
  find_package(GTest REQUIRED)
endif()
include(GoogleTest)

# GoogleTest and the standard headers cost more than most tests do; all suites share one
# precompiled form of them. Its owner is a program too, since it must be compiled as they are.
set(owner "${PROJECT_BINARY_DIR}/cmake/test_headers.cpp")
file(CONFIGURE OUTPUT "${owner}" CONTENT "int main() {}\n")
add_executable(qor_test_headers EXCLUDE_FROM_ALL "${owner}")
target_link_libraries(qor_test_headers PRIVATE GTest::gtest)
target_precompile_headers(qor_test_headers PRIVATE
  <gtest/gtest.h> <algorithm> <any> <array> <atomic> <functional> <future> <iomanip> <limits> <list>
  <map> <memory> <optional> <random> <set> <sstream> <string> <thread> <tuple> <typeindex>
  <unordered_map> <utility> <vector>)
qor_set_warnings(qor_test_headers)

# Makes the suite `name` from the sources after LIBRARIES <libraries> SOURCES; each of its tests is
# one of ctest's and carries the name of its room as label.
function(qor_add_test_suite name)
  cmake_parse_arguments(PARSE_ARGV 1 SUITE "" "LABEL" "LIBRARIES;SOURCES")
  if(NOT SUITE_SOURCES)
    return()  # a room that has no tests yet
  endif()
  add_executable(${name} ${SUITE_SOURCES})
  qor_set_warnings(${name})
  target_link_libraries(${name} PRIVATE ${SUITE_LIBRARIES} GTest::gtest GTest::gtest_main)
  target_precompile_headers(${name} REUSE_FROM qor_test_headers)
  target_compile_definitions(${name} PRIVATE QOR_SHARED_DATA_DIR="${QOR_SHARED_DATA_DIR}")
  if(CMAKE_CROSSCOMPILING)
    # An emulator takes longer to start than most tests run.
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES LABELS ${SUITE_LABEL} TIMEOUT 600)
    return()
  endif()
  # The names are asked for when the tests start: a suite that ends in its static initialisers is
  # a failed test and not a failed build.
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
                       PROPERTIES LABELS ${SUITE_LABEL} TIMEOUT 600)
endfunction()

# Adds the test `name`, which passes if `source` does not compile against `library` and one of the
# compiler's errors matches `regex`.
function(qor_add_compile_fail_test name library source regex)
  set(includes "$<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>")
  add_test(NAME ${name}
    COMMAND ${CMAKE_COMMAND} "-DREGEX=${regex}" -P "${PROJECT_SOURCE_DIR}/cmake/MustNotCompile.cmake"
            -- "${CMAKE_CXX_COMPILER}" -std=c++20 -fsyntax-only "-I$<JOIN:${includes},;-I>"
            "${source}"
    COMMAND_EXPAND_LISTS)
  set_tests_properties(${name} PROPERTIES LABELS compile_fail)
endfunction()

# Compiles every header of `target`, public or not, as a file of its own, unless a source of its
# name includes it first and so proves as much already.
function(qor_check_headers_alone target)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS src/*.cpp)
  set(proven)
  foreach(source IN LISTS sources)
    cmake_path(GET source STEM name)
    file(STRINGS "${source}" first_include REGEX "^#include" LIMIT_COUNT 1)
    if(first_include MATCHES "[</\"]${name}\\.h[>\"]")
      list(APPEND proven ${name})
    endif()
  endforeach()

  set(units)
  foreach(folder IN ITEMS include src)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}/${folder}"
         "${folder}/*.h")
    foreach(header IN LISTS headers)
      cmake_path(GET header STEM name)
      if(name IN_LIST proven)
        continue()
      endif()
      set(unit "${CMAKE_CURRENT_BINARY_DIR}/headers_alone/${folder}/${header}.cpp")
      file(CONFIGURE OUTPUT "${unit}" CONTENT "#include \"${header}\"\n")
      list(APPEND units "${unit}")
    endforeach()
  endforeach()
  if(NOT units)
    return()
  endif()
  add_library(${target}_headers_alone OBJECT ${units})
  qor_set_warnings(${target}_headers_alone)
  target_include_directories(${target}_headers_alone PRIVATE src)
  target_link_libraries(${target}_headers_alone PRIVATE ${target})
  # Only the reading of the headers counts, so nothing is spent on code.
  target_compile_options(${target}_headers_alone PRIVATE $<$<NOT:$<BOOL:${MSVC}>>:-O0 -g0>)
endfunction()
