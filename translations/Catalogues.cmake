# Compiles the catalogues into the program: what is not looked at costs no memory there. Sets
# METERKIN_LANGUAGES for whoever includes this from a folder below.

# Beside Qt's other tools. Its package for CMake is not asked: it brings Qt's editors along.
get_target_property(moc Qt6::moc LOCATION)
cmake_path(GET moc PARENT_PATH tools)
find_program(METERKIN_LRELEASE NAMES lrelease-qt6 lrelease HINTS ${tools} ${tools}/../bin REQUIRED)

file(GLOB catalogues CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.ts)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/translations) # make does not, as ninja does
set(compiled)
set(languages en)
foreach(catalogue IN LISTS catalogues)
    cmake_path(GET catalogue STEM name)
    set(output ${CMAKE_CURRENT_BINARY_DIR}/translations/${name}.qm)
    add_custom_command(OUTPUT ${output} VERBATIM
        COMMAND ${METERKIN_LRELEASE} -silent -nounfinished ${catalogue} -qm ${output}
        DEPENDS ${catalogue})
    list(APPEND compiled ${output})
    string(REPLACE meterkin_ "" language ${name})
    list(APPEND languages ${language})
endforeach()
# Used where they lie in the program, so not compressed; the format without times of files.
qt_add_resources(MeterkinShell translations PREFIX / BASE ${CMAKE_CURRENT_BINARY_DIR}
    FILES ${compiled} OPTIONS --no-compress --format-version 1)
set(METERKIN_LANGUAGES ${languages} PARENT_SCOPE)
