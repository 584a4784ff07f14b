# Compile settings shared by every target, and the helpers that declare rooms and tests.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(quintara_settings INTERFACE)
target_include_directories(quintara_settings INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(quintara_settings INTERFACE
  -Wall -Wextra -Wconversion -Wshadow $<$<BOOL:${QUINTARA_WERROR}>:-Werror>
  # GCC 12 takes the concatenation of strings for overlapping copies; GCC 13 no longer does.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  # A fused multiply-add rounds once where the rules of the levels round twice.
  -ffp-contract=off)
if(QUINTARA_SANITIZE)
  target_compile_options(quintara_settings INTERFACE
    -fsanitize=${QUINTARA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quintara_settings INTERFACE -fsanitize=${QUINTARA_SANITIZE})
endif()

# quintara_room(NAME SOURCES... LINKS target...): one folder, one static library; LINKS are its arrows.
function(quintara_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(${name} PUBLIC quintara_settings ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
endfunction()

# quintara_test(NAME SOURCES... LINKS target... [ENVIRONMENT VAR=value...]): one GoogleTest program
# and its entry in CTest.
function(quintara_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE quintara_settings ${TEST_LINKS} GTest::gmock GTest::gtest_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${TEST_ENVIRONMENT}")
endfunction()
