# What is installed where, and what cpack makes of it: an RPM (scripts/package), and an archive of the source
# (the target package_source).
include(GNUInstallDirs)
include(packaging/Releases.cmake)
include(packaging/PackageNames.cmake)
set(METERKIN_PROJECT_LINKS)
if(METERKIN_PROJECT_URL)
    # Software centres fetch pictures; they are expected beside the project's page.
    string(CONCAT METERKIN_PROJECT_LINKS
        "\n  <url type=\"homepage\">${METERKIN_PROJECT_URL}</url>"
        "\n  <screenshots>"
        "\n    <screenshot type=\"default\">"
        "\n      <caption>The dashboard, in a light and a dark desktop</caption>"
        "\n      <image>${METERKIN_PROJECT_URL}/docs/windows.png</image>"
        "\n    </screenshot>"
        "\n    <screenshot>"
        "\n      <caption>The title in the panels of several desktops</caption>"
        "\n      <image>${METERKIN_PROJECT_URL}/docs/panels.png</image>"
        "\n    </screenshot>"
        "\n  </screenshots>")
endif()
configure_file(packaging/org.meterkin.meterkin.metainfo.xml.in
    org.meterkin.meterkin.metainfo.xml @ONLY)
install(TARGETS meterkin RUNTIME)
install(TARGETS meterkin-windows meterkin-wayland
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/meterkin)
install(FILES packaging/org.meterkin.Meterkin.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_BINARY_DIR}/org.meterkin.meterkin.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/icons/org.meterkin.Meterkin.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
# For panels and software centres that take no drawing. The smallest have one with fewer parts.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(icon_sizes 16 22 24 32 48 64 128 256 512)
foreach(size IN LISTS icon_sizes)
    set(drawing ${CMAKE_SOURCE_DIR}/packaging/icons/org.meterkin.Meterkin.svg)
    if(size LESS 32)
        set(drawing ${CMAKE_SOURCE_DIR}/packaging/icons/small.svg)
    endif()
    set(icon ${CMAKE_BINARY_DIR}/icons/${size}x${size}/apps/org.meterkin.Meterkin.png)
    cmake_path(GET icon PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${icon}
        COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${icon} ${drawing}
        DEPENDS ${drawing} VERBATIM)
    list(APPEND icons ${icon})
endforeach()
add_custom_target(icons ALL DEPENDS ${icons})
install(DIRECTORY ${CMAKE_BINARY_DIR}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES packaging/meterkin.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/meterkin)

set(CPACK_PACKAGE_NAME meterkin)
set(CPACK_PACKAGE_VENDOR "The Meterkin developers")
set(CPACK_PACKAGE_CONTACT "${METERKIN_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${METERKIN_SUMMARY}")
set(CPACK_RPM_PACKAGE_DESCRIPTION
    "Meterkin keeps an eye on three vitals of the machine. The one you choose stands as\ncoloured text in the panel; a click shows all of them with their last readings,\nand a notification tells when one turns red.")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_SOURCE_GENERATOR TXZ)
set(CPACK_SOURCE_IGNORE_FILES /build/ /\\\\.git/ /\\\\.git$ __pycache__ \\\\.pyc$)
set(CPACK_SOURCE_PACKAGE_FILE_NAME meterkin-${PROJECT_VERSION})

# rpmbuild finds the libraries by itself.
meterkin_packages(run CPACK_RPM_PACKAGE_REQUIRES RPM)
meterkin_packages(recommended recommended RPM)
set(CPACK_RPM_PACKAGE_AUTOREQ YES)
set(CPACK_RPM_PACKAGE_LICENSE LicenseRef-Proprietary)
set(CPACK_RPM_PACKAGE_URL "${METERKIN_PROJECT_URL}")
set(CPACK_RPM_PACKAGE_RELOCATABLE OFF)
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
# The same bits at each build; what CMake 3.25 has no word for.
set(CPACK_RPM_SPEC_MORE_DEFINE "%global use_source_date_epoch_as_buildtime 1
%global clamp_mtime_to_source_date_epoch 1
%global _buildhost localhost
%global _build_id_links none
Recommends: ${recommended}")
# Folders that are the system's own.
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION)
foreach(folder applications metainfo icons icons/hicolor icons/hicolor/scalable icons/hicolor/scalable/apps
        man man/man1 doc)
    list(APPEND CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION /usr/share/${folder})
endforeach()
foreach(size IN LISTS icon_sizes)
    list(APPEND CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
        /usr/share/icons/hicolor/${size}x${size} /usr/share/icons/hicolor/${size}x${size}/apps)
endforeach()
include(CPack)
