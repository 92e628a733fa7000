# Settings that every target of the tree shares, and the two functions by which folders add theirs.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release, RelWithDebInfo" FORCE)
endif()

option(KORVAX_WERROR "Treat warnings as errors" OFF)
option(KORVAX_BENCHMARKS "Build the benchmarks" OFF)
option(KORVAX_FUZZ "Instrument everything for fuzzing, and build the fuzz targets (clang only)" OFF)
set(KORVAX_SANITIZE "" CACHE STRING "Sanitizers of the whole build: address,undefined or thread")

find_program(KORVAX_CCACHE ccache)
if(KORVAX_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER "${KORVAX_CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${KORVAX_CCACHE}")
endif()

if(KORVAX_SANITIZE)
  add_compile_options(-fsanitize=${KORVAX_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KORVAX_SANITIZE})
  if(KORVAX_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()

if(KORVAX_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "KORVAX_FUZZ needs clang, as in: cmake --preset fuzz")
  endif()
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

add_library(korvax_warnings INTERFACE)
target_compile_options(korvax_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wconversion $<$<BOOL:${KORVAX_WERROR}>:-Werror>)
target_compile_definitions(korvax_warnings INTERFACE
  QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

# korvax_library(NAME SOURCES file... LINKS target...): the static library of one folder.
# Headers are included by folder: #include "framework/PinOutput.h".
function(korvax_library NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${NAME} STATIC ${ARG_SOURCES})
  target_include_directories(${NAME} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${NAME} PUBLIC ${ARG_LINKS} PRIVATE korvax_warnings)
endfunction()

# korvax_test(NAME SOURCES file... LINKS target... [LABEL label]): a GoogleTest program whose tests
# CTest runs one by one, each in a process of its own.
function(korvax_test NAME)
  cmake_parse_arguments(ARG "" "LABEL" "SOURCES;LINKS" ${ARGN})
  add_executable(${NAME} ${ARG_SOURCES})
  target_include_directories(${NAME} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${NAME} PRIVATE ${ARG_LINKS} korvax_test_support GTest::gmock korvax_warnings)
  set_target_properties(${NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests-bin")
  gtest_discover_tests(${NAME} TEST_PREFIX "${NAME}." DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 120 LABELS "${ARG_LABEL}")
endfunction()
