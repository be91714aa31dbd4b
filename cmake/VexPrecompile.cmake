# Headers that many sources read, compiled once. Only where VEX_PRECOMPILE says so:
# a build without it shows that each source includes what it uses.
option(VEX_PRECOMPILE "Compile headers that many sources read once, for a quicker build" OFF)

# Both targets share what they are compiled with, or the compiler could not take
# the result.
function(vex_precompiled name)
  cmake_parse_arguments(arg "" "" "HEADERS;LIBRARIES" ${ARGN})
  add_library(${name} OBJECT ${PROJECT_SOURCE_DIR}/cmake/nothing.cpp)
  target_link_libraries(${name} PRIVATE vex_compile ${arg_LIBRARIES})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

set(VEX_COMMON_HEADERS
  <algorithm> <cstddef> <fstream> <functional> <map> <memory> <optional> <ostream> <set>
  <sstream> <string> <string_view> <unordered_map> <utility> <variant> <vector>
  <I18NString.h>)

# vex_use_precompiled(target precompiled)
function(vex_use_precompiled target precompiled)
  if(VEX_TOGETHER)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
  endif()
  if(VEX_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM ${precompiled})
    target_compile_options(${target} PRIVATE -fPIC) # programs too, as what they take
  endif()
endfunction()

if(VEX_PRECOMPILE)
  vex_precompiled(vex_headers HEADERS ${VEX_COMMON_HEADERS}
    LIBRARIES ICU::uc ICU::i18n)
  target_include_directories(vex_headers PRIVATE ${PROJECT_SOURCE_DIR}/platform/include)
endif()
