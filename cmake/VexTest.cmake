find_package(GTest REQUIRED)

# Tests are compiled as the preset says (VEX_TEST_OPTIONS, such as -O0): they wait for
# what they test.
set(VEX_TEST_OPTIONS "" CACHE STRING "Compiler options of tests, behind those of the build type")

if(VEX_PRECOMPILE)
  vex_precompiled(vex_test_headers
    HEADERS ${VEX_COMMON_HEADERS} <gmock/gmock.h> <gtest/gtest.h>
    LIBRARIES VexPlatform GTest::gmock)
  target_compile_options(vex_test_headers PRIVATE ${VEX_TEST_OPTIONS})
endif()

function(vex_compile_as_test target)
  target_compile_options(${target} PRIVATE ${VEX_TEST_OPTIONS})
  vex_use_precompiled(${target} vex_test_headers)
endfunction()

# What `ctest -L concurrent` runs, to be built without the other tests.
add_custom_target(concurrent_tests)

# vex_add_test(name SOURCES file... LIBRARIES target... [LABELS label...] [SHARDS n]):
# a test program, run as one test of CTest, or as SHARDS of them when it takes long.
# Each of its tests for itself would cost more in starts than in tests. A failure
# is told with the name of the test that failed.
function(vex_add_test name)
  cmake_parse_arguments(arg "" "SHARDS" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE vex_compile ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE
    VEX_SOURCE_DIR="${CMAKE_SOURCE_DIR}" VEX_BINARY_DIR="${CMAKE_BINARY_DIR}")
  vex_compile_as_test(${name})
  if("concurrent" IN_LIST arg_LABELS)
    add_dependencies(concurrent_tests ${name})
  endif()

  set(runs ${name})
  if(arg_SHARDS)
    list(TRANSFORM runs APPEND .1)
    foreach(number RANGE 2 ${arg_SHARDS})
      list(APPEND runs ${name}.${number})
    endforeach()
  endif()
  set(index 0)
  foreach(run IN LISTS runs)
    add_test(NAME ${run} COMMAND ${name})
    # Whoever runs the tests keeps the cache that they have.
    set(environment GTEST_BRIEF=1 XDG_CACHE_HOME=${CMAKE_BINARY_DIR}/caches)
    if(arg_SHARDS)
      list(APPEND environment GTEST_TOTAL_SHARDS=${arg_SHARDS} GTEST_SHARD_INDEX=${index})
      math(EXPR index "${index} + 1")
    endif()
    set_tests_properties(${run} PROPERTIES
      TIMEOUT 1200 LABELS "${arg_LABELS}" ENVIRONMENT "${environment}")
  endforeach()
endfunction()
