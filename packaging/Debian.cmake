# Fills in the files of a Debian source package that is being put together:
#   cmake -DPROJECT_VERSION=VERSION [-DMETERKIN_CONTACT=...] -P packaging/Debian.cmake   in its folder
cmake_policy(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/Owner.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/Releases.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/PackageNames.cmake)
foreach(section build run recommended)
    meterkin_packages(${section} ${section})
endforeach()
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/control.in ${CMAKE_CURRENT_BINARY_DIR}/debian/control @ONLY)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog "${METERKIN_CHANGELOG}")
