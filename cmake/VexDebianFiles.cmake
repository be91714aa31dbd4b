# Run by CPack on the installed components, before the packages are written: adds
# what every Debian package holds and compresses what Debian keeps compressed.
function(vex_compress)
  foreach(file IN LISTS ARGN)
    execute_process(COMMAND gzip --best --no-name --force ${file} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
endfunction()

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC) # of SOURCE_DATE_EPOCH, when set
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  set(docs ${root}/share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  file(MAKE_DIRECTORY ${docs})
  configure_file(${CPACK_VEX_DEBIAN_FILES}/copyright ${docs}/copyright COPYONLY)
  configure_file(${CPACK_VEX_DEBIAN_FILES}/changelog.in ${docs}/changelog @ONLY)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(overrides ${CPACK_VEX_DEBIAN_FILES}/${package}.lintian-overrides)
  if(EXISTS ${overrides})
    configure_file(${overrides} ${root}/share/lintian/overrides/${package} COPYONLY)
    file(CHMOD ${root}/share/lintian/overrides/${package}
      PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    file(CHMOD ${root}/share/lintian ${root}/share/lintian/overrides PERMISSIONS OWNER_READ
      OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endif()
  file(CHMOD ${docs}/copyright ${docs}/changelog
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  file(CHMOD ${root}/share ${root}/share/doc ${docs} PERMISSIONS OWNER_READ OWNER_WRITE
    OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  file(GLOB pages ${root}/share/man/man1/*.1)
  vex_compress(${docs}/changelog ${pages})
endforeach()
