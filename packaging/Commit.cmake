# METERKIN_COMMIT: what the program is built from. In a clone git names it when the build is configured,
# an archive that git made bears it; elsewhere it is empty. An archive may lie in a clone of something else.
set(METERKIN_COMMIT "$Format:%h$")
if(METERKIN_COMMIT MATCHES "Format")
    set(METERKIN_COMMIT "")
endif()
find_package(Git QUIET)
if(GIT_FOUND AND EXISTS ${CMAKE_SOURCE_DIR}/.git)
    execute_process(
        COMMAND ${GIT_EXECUTABLE} describe --always --dirty --abbrev=12 --exclude=*
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
        OUTPUT_VARIABLE METERKIN_COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
