# Warnings, sanitizers and coverage for every target of ours.
add_library(vex_compile INTERFACE)
target_compile_options(vex_compile INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)

# g++ 12 takes its own library for faulty: strings that are joined at -O3, and
# regular expressions under a sanitizer.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(vex_compile INTERFACE -Wno-restrict)
  if(VEX_SANITIZE)
    target_compile_options(vex_compile INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

# Several sources of a target compiled as one, which takes half as long. Other builds do
# without it and show that each stands by itself. The unnamed namespaces of those sources are
# one here: of two names that are the same, one is to be changed; that a name hides another
# or bases a type is no fault of theirs.
option(VEX_TOGETHER "Compile several sources at a time, for a quicker build" OFF)
if(VEX_TOGETHER)
  target_compile_options(vex_compile INTERFACE -Wno-shadow)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(vex_compile INTERFACE -Wno-subobject-linkage)
  endif()
endif()

if(VEX_SANITIZE STREQUAL "address")
  set(flags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
elseif(VEX_SANITIZE STREQUAL "thread")
  set(flags -fsanitize=thread -fno-omit-frame-pointer)
elseif(VEX_SANITIZE)
  message(FATAL_ERROR "VEX_SANITIZE is '${VEX_SANITIZE}'; use 'address', 'thread' or leave it empty")
endif()
if(VEX_BUILD_FUZZ)
  # What comparisons would tell stands in the dictionaries: without them a target
  # does up to half as much again and comes as far.
  list(APPEND flags -fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()
if(VEX_COVERAGE)
  # Several threads count.
  list(APPEND flags --coverage -fprofile-update=atomic)
endif()
if(flags)
  target_compile_options(vex_compile INTERFACE ${flags})
  target_link_options(vex_compile INTERFACE ${flags})
endif()
