# What is installed where, and the Debian package of it:  cpack -G DEB --config build/release/CPackConfig.cmake
include(GNUInstallDirs)
configure_file(packaging/org.meterkin.Meterkin.metainfo.xml.in
    org.meterkin.Meterkin.metainfo.xml @ONLY)
install(TARGETS meterkin RUNTIME)
install(TARGETS meterkin-windows meterkin-wayland
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/meterkin)
install(FILES packaging/org.meterkin.Meterkin.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_BINARY_DIR}/org.meterkin.Meterkin.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/icons/org.meterkin.Meterkin.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES packaging/meterkin.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# The names of one section of the list of packages, with commas between them.
function(debian_packages section result)
    file(STRINGS scripts/packages lines)
    set(names)
    set(inside FALSE)
    foreach(line IN LISTS lines)
        if(line MATCHES "^\\[")
            string(COMPARE EQUAL "${line}" "[${section}]" inside)
        elseif(inside AND line MATCHES "^[a-z0-9]")
            list(APPEND names ${line})
        endif()
    endforeach()
    list(JOIN names ", " names)
    set(${result} ${names} PARENT_SCOPE)
endfunction()

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS scripts/packages)
debian_packages(run run_packages)
# The libraries with their versions come from the program itself: it works with no older one, nor
# with another of those whose inner parts it uses.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
string(REGEX REPLACE "lib[^,]+, " "" CPACK_DEBIAN_PACKAGE_DEPENDS "${run_packages}")
debian_packages(recommended CPACK_DEBIAN_PACKAGE_RECOMMENDS)
set(CPACK_PACKAGE_NAME meterkin)
set(CPACK_PACKAGE_CONTACT "The Meterkin developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "CPU, memory and fan speed in the panel of your desktop")
set(CPACK_PACKAGE_DESCRIPTION
    "Shows one vital of the machine as coloured text in the panel, all of\nthem on a click, and tells when one turns red.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
include(CPack)
