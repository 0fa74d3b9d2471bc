# METERKIN_COMMIT: what the program is built from, as git names it when the build is configured;
# empty where this is no clone, as in an unpacked archive, which may lie in a clone of something else.
set(METERKIN_COMMIT "")
find_package(Git QUIET)
if(GIT_FOUND AND EXISTS ${CMAKE_SOURCE_DIR}/.git)
    execute_process(
        COMMAND ${GIT_EXECUTABLE} describe --always --dirty --abbrev=12 --exclude=*
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
        OUTPUT_VARIABLE METERKIN_COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
