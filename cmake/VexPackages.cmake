# Debian packages, one for each component; scripts/package builds them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vex-metadata-access)
set(CPACK_PACKAGE_VENDOR "Vex Metadata Access developers")
set(CPACK_PACKAGE_CONTACT "Vex Metadata Access developers <developers@vexma.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL runtime plugin dev tool hostruntime hostdev)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS # whatever the builder's umask is
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The platform's library is in none of the machine's packages: it is looked for
# in the build, and the dependency on its package is written out below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(same_version "(= ${PROJECT_VERSION})")

# vex_package(component package section [SHLIBDEPS] [DEPENDS text] DESCRIPTION text)
macro(vex_package component package section)
  cmake_parse_arguments(arg "SHLIBDEPS" "DEPENDS;DESCRIPTION" "" ${ARGN})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SOURCE ${CPACK_PACKAGE_NAME})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ${arg_SHLIBDEPS})
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${arg_DEPENDS}")
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${arg_DESCRIPTION}")
endmacro()

vex_package(runtime libvexplatform1 libs SHLIBDEPS
  DESCRIPTION "library shared by hosts and plug-ins of Vex Metadata Access
The platform: strings, documents, objects of a model, sessions and the factory
that plug-ins register with. Hosts and plug-ins link it.")
vex_package(plugin vex-ma-plugin libs SHLIBDEPS
  DEPENDS "libvexplatform1 ${same_version}"
  DESCRIPTION "plug-in that answers what a user may see of a semantic model
Answers two requests of a host: for the metadata tree of a model, as far as the
user may see it, and whether single objects are accessible.")
vex_package(dev libvexplatform-dev libdevel
  DEPENDS "libvexplatform1 ${same_version}, libicu-dev (>= 72), libxerces-c-dev (>= 3.2)"
  DESCRIPTION "headers for hosts and plug-ins of Vex Metadata Access
What hosts and plug-ins are built with: the headers of the platform, the link
to its library and the files by which CMake and pkg-config find them.")
vex_package(tool vexma utils SHLIBDEPS
  DEPENDS "libvexplatform1 ${same_version}, vex-ma-plugin ${same_version}"
  DESCRIPTION "asks what a user may see of a semantic model
A command line program that reads models and catalogues from files, loads the
plug-in and prints its answers: as XML, as a tree, as JSON lines. It also says
why an object is hidden, looks for leaks and compares users.")
vex_package(hostruntime libvexhost1 libs SHLIBDEPS
  DEPENDS "libvexplatform1 ${same_version}"
  DESCRIPTION "library for hosts of Vex Metadata Access
What every host needs beside the platform: readers of models and catalogues,
models from rows, sessions, references and the loading of plug-ins.")
vex_package(hostdev libvexhost-dev libdevel
  DEPENDS "libvexhost1 ${same_version}, libvexplatform-dev ${same_version}"
  DESCRIPTION "headers for hosts with the readers of Vex Metadata Access
What a host is built with that uses the readers and helpers: their headers, the
link to the library and the files by which CMake and pkg-config find them.")
# What "vexma import database" reaches databases with.
set(CPACK_DEBIAN_TOOL_PACKAGE_SUGGESTS "odbc-postgresql, libsqliteodbc")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "vex-ma-plugin")
set(CPACK_DEBIAN_HOSTDEV_PACKAGE_SUGGESTS "vex-ma-plugin")

# Control files of the library's package: what other packages write into their
# dependencies when they link it, and that the loader's cache is to be renewed.
# (CPack adds scripts of its own that renew it too; it cannot be told not to.)
set(control ${CMAKE_CURRENT_BINARY_DIR}/debian)
file(WRITE ${control}/shlibs "libVexPlatform 1 libvexplatform1 (>= ${PROJECT_VERSION})\n")
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)
file(WRITE ${control}/host/shlibs "libVexHost 1 libvexhost1 (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_HOSTRUNTIME_PACKAGE_CONTROL_EXTRA ${control}/host/shlibs ${control}/triggers)

# Copyright, changelog and compressed manual pages: for packages only.
set(CPACK_VEX_DEBIAN_FILES ${CMAKE_CURRENT_SOURCE_DIR}/cmake/debian)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/cmake/VexDebianFiles.cmake)

include(CPack)
