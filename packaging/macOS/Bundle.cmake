# Makes a bundle of the program: Meterkin.app, with the update framework in it.
set(METERKIN_UPDATE_PUBLIC_KEY "" CACHE STRING "The key that updates are signed with; empty for none")

set(METERKIN_UPDATE_KEYS "")
foreach(pair SUFeedURL=METERKIN_FEED_URL SUPublicEDKey=METERKIN_UPDATE_PUBLIC_KEY)
    string(REGEX MATCH "^(.*)=(.*)$" pair ${pair})
    set(value "${${CMAKE_MATCH_2}}")
    if(value)
        string(REPLACE "&" "&amp;" value "${value}")
        string(REPLACE "<" "&lt;" value "${value}")
        # A second pass of CMake's would take what stands between two of them for a variable.
        string(REPLACE "@" "&#64;" value "${value}")
        string(REPLACE "$" "&#36;" value "${value}")
        string(APPEND METERKIN_UPDATE_KEYS
            "\n    <key>${CMAKE_MATCH_1}</key>\n    <string>${value}</string>")
    endif()
endforeach()
list(TRANSFORM METERKIN_LANGUAGES REPLACE "(.+)" "\n        <string>\\1</string>"
    OUTPUT_VARIABLE METERKIN_LOCALIZATIONS)
string(JOIN "" METERKIN_LOCALIZATIONS ${METERKIN_LOCALIZATIONS})
configure_file(${CMAKE_CURRENT_LIST_DIR}/Info.plist.in Info.plist @ONLY)

set_target_properties(meterkin PROPERTIES
    MACOSX_BUNDLE TRUE
    OUTPUT_NAME Meterkin
    MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_BINARY_DIR}/Info.plist
    BUILD_WITH_INSTALL_RPATH TRUE
    INSTALL_RPATH @executable_path/../Frameworks)

set(icon ${CMAKE_CURRENT_LIST_DIR}/Meterkin.icns)
target_sources(meterkin PRIVATE ${icon})
set_source_files_properties(${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)

# The framework's symbolic links have to stay links, or its signature no longer holds.
find_program(DITTO ditto)
if(DITTO)
    set(copy_framework ${DITTO})
else()
    set(copy_framework cp -a)
endif()
set(frameworks $<TARGET_BUNDLE_CONTENT_DIR:meterkin>/Frameworks)
add_custom_command(TARGET meterkin POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${frameworks}/Sparkle.framework
    COMMAND ${CMAKE_COMMAND} -E make_directory ${frameworks}
    COMMAND ${copy_framework} ${METERKIN_SPARKLE}/Sparkle.framework ${frameworks}/Sparkle.framework)
