find_package(GTest REQUIRED)
include(GoogleTest)

# What `ctest -L concurrent` runs, to be built without the other tests.
add_custom_target(concurrent_tests)

# vex_add_test(name SOURCES file... LIBRARIES target... [LABELS label...]):
# a test program whose tests are listed one by one with CTest.
function(vex_add_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE vex_compile ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE
    VEX_SOURCE_DIR="${CMAKE_SOURCE_DIR}" VEX_BINARY_DIR="${CMAKE_BINARY_DIR}")
  set(properties TIMEOUT 600)
  if(arg_LABELS) # an empty value would be lost on the way, and the next word taken for it
    list(APPEND properties LABELS "${arg_LABELS}")
  endif()
  if("concurrent" IN_LIST arg_LABELS)
    add_dependencies(concurrent_tests ${name})
  endif()
  gtest_discover_tests(${name} PROPERTIES ${properties} DISCOVERY_TIMEOUT 60)
endfunction()
