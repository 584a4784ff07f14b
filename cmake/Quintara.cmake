# Compile settings shared by every target, and the helpers that declare rooms and tests.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(quintara_settings INTERFACE)
target_compile_options(quintara_settings INTERFACE
  -Wall -Wextra -Wconversion -Wshadow $<$<BOOL:${QUINTARA_WERROR}>:-Werror>
  # GCC 12 takes the concatenation of strings for overlapping copies; GCC 13 no longer does.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
  # A fused multiply-add rounds once where the rules of the levels round twice.
  -ffp-contract=off)
# Everywhere but in what a trader runs, the library checks that an entry is in its container.
if(QUINTARA_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  target_compile_definitions(quintara_settings INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(QUINTARA_SANITIZE)
  target_compile_options(quintara_settings INTERFACE
    -fsanitize=${QUINTARA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quintara_settings INTERFACE -fsanitize=${QUINTARA_SANITIZE})
else()
  # A fault that could be used against the trader ends the program instead. Fortifying needs an
  # optimising compiler; the flag against forged jumps is one of x86.
  target_compile_options(quintara_settings INTERFACE $<$<CONFIG:Release>:
    -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
    # What is built does not say where, so that two builds are the same.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build>)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
    target_compile_options(quintara_settings INTERFACE $<$<CONFIG:Release>:-fcf-protection>)
  endif()
  target_link_options(quintara_settings INTERFACE $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
endif()

# Made anew each time, so that nothing is left of a room or a header that is gone.
file(REMOVE_RECURSE "${CMAKE_BINARY_DIR}/doors" "${CMAKE_BINARY_DIR}/walls")

# quintara_doors(TARGET FOLDER): lets those who link TARGET include the headers of FOLDER, and no others.
# The include directory is a folder of links to just these headers, so that a header whose room is not
# linked is not found. Their paths begin below src/ or tests/, or at the project (service/...).
function(quintara_doors target folder)
  cmake_path(ABSOLUTE_PATH folder NORMALIZE)
  set(path "${folder}")
  foreach(root "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests" "${PROJECT_SOURCE_DIR}")
    cmake_path(IS_PREFIX root "${folder}" below)
    if(below)
      cmake_path(RELATIVE_PATH path BASE_DIRECTORY "${root}")
      break()
    endif()
  endforeach()
  set(doors "${CMAKE_BINARY_DIR}/doors/${target}")
  file(GLOB headers CONFIGURE_DEPENDS "${folder}/*.hpp")
  file(MAKE_DIRECTORY "${doors}/${path}")
  foreach(header IN LISTS headers)
    cmake_path(GET header FILENAME name)
    file(CREATE_LINK "${header}" "${doors}/${path}/${name}" SYMBOLIC)
  endforeach()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${target} INTERFACE "${doors}")
  else()
    target_include_directories(${target} PUBLIC "${doors}")
  endif()
endfunction()

# quintara_room(NAME [FOLDER folder] SOURCES file... LINKS target...): one folder, one static library;
# LINKS are its arrows. They can only lead to rooms that are there already: no circles.
function(quintara_room name)
  cmake_parse_arguments(ROOM "" "FOLDER" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  if(NOT ROOM_FOLDER)
    set(ROOM_FOLDER ${name})
  endif()
  foreach(link IN LISTS ROOM_LINKS)
    if(NOT TARGET ${link})
      message(FATAL_ERROR "The room ${name} links ${link}, which is no room below it")
    endif()
  endforeach()
  list(TRANSFORM ROOM_SOURCES PREPEND "${ROOM_FOLDER}/")
  add_library(${name} STATIC ${ROOM_SOURCES})
  quintara_doors(${name} "${ROOM_FOLDER}")
  target_link_libraries(${name} PUBLIC quintara_settings ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
  # What the test of the walls compares with what the room's files can include.
  file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/walls/${name}" CONTENT
    "folder ${ROOM_FOLDER}\nlinks ${ROOM_LINKS}\nsees $<TARGET_PROPERTY:${name},INCLUDE_DIRECTORIES>\n")
endfunction()

# quintara_outside(TARGET...): programs that are no room, but keep to the walls, too.
function(quintara_outside)
  foreach(name IN LISTS ARGN)
    file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/walls/outside/${name}" CONTENT
      "$<JOIN:$<TARGET_PROPERTY:${name},INCLUDE_DIRECTORIES>,\n>\n")
  endforeach()
endfunction()

# quintara_test(NAME SOURCES... LINKS target... [ENVIRONMENT VAR=value...]): one GoogleTest program
# and its entry in CTest.
function(quintara_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name}
    PRIVATE quintara_settings test_support ${TEST_LINKS} GTest::gmock GTest::gtest_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  quintara_outside(${name})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${TEST_ENVIRONMENT}")
endfunction()
