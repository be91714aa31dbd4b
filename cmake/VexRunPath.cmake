# Where programs and libraries look for those of this project: beside themselves, as in a
# build, and where an installation puts them. The same in both: behind a run path that is
# changed when it is installed CMake leaves room, which means the current folder.
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN")
