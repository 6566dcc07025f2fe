# How everything in this project is compiled: the language, warnings and sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_UNITY_BUILD OFF)  # source files have names of their own in unnamed namespaces

if(QOR_SANITIZE STREQUAL "address")
  set(sanitizers address,undefined)
elseif(QOR_SANITIZE STREQUAL "thread")
  set(sanitizers thread)
elseif(QOR_SANITIZE)
  message(FATAL_ERROR "QOR_SANITIZE is '${QOR_SANITIZE}'; it takes 'address', 'thread' or nothing")
endif()
if(QOR_SANITIZE)
  # Without -fno-sanitize-recover undefined behaviour is only printed, and the test passes.
  add_compile_options(-fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${sanitizers})
endif()
if(QOR_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "QOR_BUILD_FUZZ needs clang: configure with CMAKE_CXX_COMPILER=clang++")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link)  # the library reports its coverage too
endif()

# Gives `target`, one of our own, the house's warnings.
function(qor_set_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${QOR_WERROR}>:/WX>)
    return()
  endif()
  # Hiding an operation of the base is a deliberate form here (a field list hides those of its
  # base), so the warning that clang has in -Wall goes. Members have no decoration, so constructors
  # take parameters of their names: clang's -Wshadow passes that, gcc's does only as =local.
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Wno-overloaded-virtual
    $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>
    $<$<BOOL:${QOR_WERROR}>:-Werror>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # These follow the flow through inlined std::string code, and gcc 12 sees overruns there that
    # cannot happen: `std::string(a) + "b" + c` is enough.
    target_compile_options(${target} PRIVATE
      -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND QOR_SANITIZE)
    # The code of the sanitizers keeps gcc from seeing what is set, in std::function for one.
    target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
  endif()
endfunction()
