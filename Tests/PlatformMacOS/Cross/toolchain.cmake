# Builds for a Mac on Debian:
#   cmake -S . -B build/macos -G Ninja --toolchain Tests/PlatformMacOS/Cross/toolchain.cmake
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_OSX_ARCHITECTURES arm64)
set(CMAKE_OSX_SYSROOT "")

set(CMAKE_CXX_COMPILER ${CMAKE_CURRENT_LIST_DIR}/arm64-clang++)
set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER})
set(CMAKE_AR ${CMAKE_CURRENT_LIST_DIR}/arm64-ar)
set(CMAKE_RANLIB ${CMAKE_CURRENT_LIST_DIR}/arm64-ranlib)
# Asked for, and not used: what is built is never installed.
set(CMAKE_INSTALL_NAME_TOOL true)
# CMake asks the system that it runs on whether it can do this.
set(CMAKE_SHARED_LIBRARY_RUNTIME_CXX_FLAG "-Wl,-rpath,")

get_filename_component(METERKIN_DECLARATIONS ${CMAKE_CURRENT_LIST_DIR}/../Declarations ABSOLUTE)
set(CMAKE_CXX_FLAGS_INIT "-F${METERKIN_DECLARATIONS}")
set(CMAKE_OBJCXX_FLAGS_INIT "-F${METERKIN_DECLARATIONS}")
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-F${METERKIN_DECLARATIONS} -L${METERKIN_DECLARATIONS} -lobjc")

set(CMAKE_PROJECT_TOP_LEVEL_INCLUDES
    ${CMAKE_CURRENT_LIST_DIR}/DebianQt.cmake ${CMAKE_CURRENT_LIST_DIR}/SparkleLayout.cmake)
