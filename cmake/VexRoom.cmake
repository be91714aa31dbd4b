# vex_room(name USES target... [LIBRARIES target...]):
# the sources of the current folder as one library, with what it may use of this
# project (USES) and of others (LIBRARIES). Linking it whole, with nothing but
# that behind it, shows that it uses nothing else.
function(vex_room name)
  cmake_parse_arguments(arg "" "" "USES;LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  file(GLOB headers CONFIGURE_DEPENDS *.h)
  add_library(${name} STATIC ${sources})
  target_sources(${name} PUBLIC
    FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
  set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  target_link_libraries(${name} PUBLIC ${arg_USES} vex_compile PRIVATE ${arg_LIBRARIES})
  vex_use_precompiled(${name} vex_headers)

  if(VEX_BUILD_TESTS AND NOT VEX_SANITIZE)
    add_library(${name}_alone MODULE ${PROJECT_SOURCE_DIR}/cmake/nothing.cpp)
    target_link_libraries(${name}_alone PRIVATE
      "$<LINK_LIBRARY:WHOLE_ARCHIVE,${name}>" vex_compile ${arg_LIBRARIES})
    target_link_options(${name}_alone PRIVATE -Wl,-z,defs)
    set_target_properties(${name}_alone PROPERTIES LINKER_LANGUAGE CXX
      LIBRARY_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  endif()
endfunction()
