# What every room's CMakeLists.txt uses: the build's standard settings and two shorthands.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs and libraries stand together at the top of the build folder, where users look for them.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}")

find_program(VARILUM_CCACHE ccache)
if(VARILUM_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${VARILUM_CCACHE}")
endif()

set(VARILUM_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(VARILUM_SANITIZE)
  add_compile_options(-fsanitize=${VARILUM_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VARILUM_SANITIZE})
endif()

# Nothing of the compiler's run-time stands on Windows users' machines.
if(WIN32)
  add_link_options(-static)
endif()

# Floating point must give the same bits everywhere: no contraction into fused multiply-add.
add_compile_options(-ffp-contract=off)

# varilum_room(<target> [SOURCES ...] [LINKS ...]): a static library for one room of the house.
# What a room may include is what it links: the include root is the repository, so a room that
# names another's header without linking it is caught by tools/check_walls.py in ./check.
function(varilum_room target)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${target} STATIC ${ROOM_SOURCES})
  target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${target} PUBLIC ${ROOM_LINKS} PRIVATE varilum_warnings)
endfunction()

# varilum_test(<target> SOURCES ... LINKS ...): a GoogleTest program, its cases known to CTest.
# In a cross build the whole program is one of CTest's cases: starting the emulator takes its time.
function(varilum_test target)
  cmake_parse_arguments(TEST "" "" "SOURCES;LINKS;LABELS" ${ARGN})
  add_executable(${target} ${TEST_SOURCES})
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE ${TEST_LINKS} GTest::gmock GTest::gtest_main
                                          varilum_warnings)
  if(NOT TEST_LABELS)
    get_filename_component(TEST_LABELS "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
  endif()
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES LABELS "${TEST_LABELS}" TIMEOUT 900)
  else()
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60
                         PROPERTIES LABELS "${TEST_LABELS}" TIMEOUT 300)
  endif()
endfunction()

add_library(varilum_warnings INTERFACE)
target_compile_options(varilum_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion
                       -Wsign-conversion -Werror)
if(CMAKE_UNITY_BUILD)
  # A file that stands in another's company hides its names and has types of its own, rightly.
  target_compile_options(varilum_warnings INTERFACE
                         $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
else()
  target_compile_options(varilum_warnings INTERFACE -Wshadow)
endif()
