# vex_add_fuzz_sources(target): what all fuzz targets are made of.
find_package(nlohmann_json REQUIRED)
set(VEX_FUZZ_DIR ${CMAKE_CURRENT_LIST_DIR})

function(vex_add_fuzz_sources target)
  file(GLOB properties CONFIGURE_DEPENDS ${VEX_FUZZ_DIR}/*.cpp)
  list(REMOVE_ITEM properties ${VEX_FUZZ_DIR}/Entry.cpp
    ${VEX_FUZZ_DIR}/SessionCaseMutator.cpp)
  target_sources(${target} PRIVATE ${properties})
  target_link_libraries(${target} PRIVATE vex_compile vex_differential_cases vex_host
    vex_provider nlohmann_json::nlohmann_json)
  target_compile_definitions(${target} PRIVATE
    VEX_PLUGIN_FILE="$<TARGET_FILE:VexMAActionPlugin>")
  add_dependencies(${target} VexMAActionPlugin)
endfunction()
