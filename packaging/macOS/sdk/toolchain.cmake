# Builds for a Mac on Debian:
#   cmake -S . -B build/macos -G Ninja --toolchain packaging/macOS/sdk/toolchain.cmake
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_OSX_ARCHITECTURES arm64)
set(CMAKE_OSX_SYSROOT "")

set(CMAKE_CXX_COMPILER ${CMAKE_CURRENT_LIST_DIR}/arm64-clang++)
set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER})
set(CMAKE_AR ${CMAKE_CURRENT_LIST_DIR}/arm64-ar)
set(CMAKE_RANLIB ${CMAKE_CURRENT_LIST_DIR}/arm64-ranlib)
# CMake requires it, but nothing is ever installed.
set(CMAKE_INSTALL_NAME_TOOL true)
# CMake would take this from the system that it runs on.
set(CMAKE_SHARED_LIBRARY_RUNTIME_CXX_FLAG "-Wl,-rpath,")

set(METERKIN_FRAMEWORKS ${CMAKE_CURRENT_LIST_DIR}/Frameworks)
# The compiler adds debug information unless it is told not to.
set(CMAKE_CXX_FLAGS_INIT "-g0 -F${METERKIN_FRAMEWORKS}")
set(CMAKE_OBJCXX_FLAGS_INIT ${CMAKE_CXX_FLAGS_INIT})
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-F${METERKIN_FRAMEWORKS} -L${METERKIN_FRAMEWORKS} -lobjc")

set(CMAKE_PROJECT_TOP_LEVEL_INCLUDES
    ${CMAKE_CURRENT_LIST_DIR}/DebianQt.cmake ${CMAKE_CURRENT_LIST_DIR}/SparkleLayout.cmake)
