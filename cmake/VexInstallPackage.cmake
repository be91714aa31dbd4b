# vex_install_package(name component): what find_package(name) and pkg-config find,
# from cmake/<name>Config.cmake.in and cmake/<name in lower case>.pc.in. The targets
# of the export set <name>Targets are installed by their own folder.
include(CMakePackageConfigHelpers)
function(vex_install_package name component)
  set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${name})
  configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/${name}Config.cmake.in ${name}Config.cmake
    INSTALL_DESTINATION ${package_dir})
  write_basic_package_version_file(${name}ConfigVersion.cmake COMPATIBILITY SameMinorVersion)
  string(TOLOWER ${name} lower)
  set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH pkgconfig_to_prefix /prefix/${pkgconfig_dir} /prefix)
  string(REGEX REPLACE "/$" "" pkgconfig_to_prefix ${pkgconfig_to_prefix})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${lower}.pc.in ${lower}.pc @ONLY)
  install(EXPORT ${name}Targets NAMESPACE Vex:: DESTINATION ${package_dir}
    COMPONENT ${component})
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${lower}.pc
    DESTINATION ${pkgconfig_dir} COMPONENT ${component})
  install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/${name}Config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/${name}ConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT ${component})
endfunction()
