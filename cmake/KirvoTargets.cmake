# Everything that is compiled carries kirvo_options: language level, warnings, sanitizers.
add_library(kirvo_options INTERFACE)
target_compile_features(kirvo_options INTERFACE cxx_std_20)
target_include_directories(kirvo_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(kirvo_options INTERFACE -Wall -Wextra)
# Static libraries name what they may need; a program loads only what it uses.
target_link_options(kirvo_options INTERFACE -Wl,--as-needed)
if(KIRVO_WERROR)
  target_compile_options(kirvo_options INTERFACE -Werror)
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_FLAGS_RELEASE "-O2" CACHE STRING "" FORCE)
set(CMAKE_CXX_FLAGS_SANITIZED "-O1 -g" CACHE STRING "" FORCE)
set(CMAKE_EXE_LINKER_FLAGS_SANITIZED "" CACHE STRING "" FORCE)
if(CMAKE_BUILD_TYPE STREQUAL "Sanitized")
  set(kirvo_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  # GCC takes what the sanitizers add for uses of uninitialised variables, in the standard library's regex for one.
  target_compile_options(kirvo_options INTERFACE ${kirvo_sanitizers}
                                                 $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(kirvo_options INTERFACE ${kirvo_sanitizers})
  add_library(kirvo_sanitizer_options OBJECT "${CMAKE_SOURCE_DIR}/cmake/sanitizer_options.cpp")
  target_sources(kirvo_options INTERFACE $<TARGET_OBJECTS:kirvo_sanitizer_options>)
endif()
if(KIRVO_FUZZ)
  target_compile_options(kirvo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# kirvo_library(NAME LIBRARY...): the library of one folder of src, all its sources, on the libraries of lower floors.
# A main.cpp is left out: it belongs to a program.
function(kirvo_library name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  if(NOT sources)
    add_library(kirvo_${name} INTERFACE)
    target_link_libraries(kirvo_${name} INTERFACE kirvo_options ${ARGN})
    return()
  endif()
  add_library(kirvo_${name} STATIC ${sources})
  set_target_properties(kirvo_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(kirvo_${name} PUBLIC kirvo_options ${ARGN})
endfunction()

# kirvo_test(NAME LIBRARY...): tests/NAME/*.cpp as one program, NAME_tests, on GoogleTest.
function(kirvo_test name)
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp" "${CMAKE_SOURCE_DIR}/tests/${name}/*.h")
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE ${ARGN} kirvo_test_support GTest::gtest_main)
  target_include_directories(${name}_tests PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  target_compile_definitions(${name}_tests PRIVATE KIRVO_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  gtest_discover_tests(${name}_tests TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 900)
endfunction()

# kirvo_bench(NAME LIBRARY...): bench/NAME.cpp on Google Benchmark.
function(kirvo_bench name)
  if(EXISTS "${CMAKE_SOURCE_DIR}/bench/${name}.cpp")
    add_executable(${name} "${CMAKE_SOURCE_DIR}/bench/${name}.cpp")
    target_link_libraries(${name} PRIVATE ${ARGN} benchmark::benchmark)
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  endif()
endfunction()

# kirvo_fuzz(NAME LIBRARY...): fuzz/NAME.cpp on libFuzzer.
function(kirvo_fuzz name)
  if(EXISTS "${CMAKE_SOURCE_DIR}/fuzz/${name}.cpp")
    add_executable(${name} "${CMAKE_SOURCE_DIR}/fuzz/${name}.cpp")
    target_link_libraries(${name} PRIVATE ${ARGN})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  endif()
endfunction()
