# The Debian package, made by CPack from the component "controller".
find_program(GZIP gzip)
if(NOT GZIP)
    return()
endif()

configure_file(debian/changelog.in changelog @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/docs/announcement-controller.1 announcement-controller.1 COPYONLY)
foreach(file IN ITEMS changelog announcement-controller.1)
    add_custom_command(OUTPUT ${file}.gz COMMAND ${GZIP} -9nc ${file} > ${file}.gz DEPENDS ${file})
endforeach()
set(announce_manual ${PROJECT_BINARY_DIR}/announce/announce.1)
add_custom_command(OUTPUT announce.1.gz COMMAND ${GZIP} -9nc ${announce_manual} > announce.1.gz
    DEPENDS announce_pages ${announce_manual})
add_custom_target(controller_package_texts ALL DEPENDS changelog.gz announcement-controller.1.gz announce.1.gz)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz debian/copyright ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    DESTINATION ${CONTROLLER_DOC} COMPONENT controller)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/announcement-controller.1.gz ${CMAKE_CURRENT_BINARY_DIR}/announce.1.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT controller)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME announcement-controller)
# Who gives the package to others puts an address here: -DCPACK_PACKAGE_CONTACT=…
set(CPACK_PACKAGE_CONTACT "The authors of the announcement controller <maintainers@announcement-controller.example>"
    CACHE STRING "Whom users of the package ask")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL controller)
set(CPACK_DEBIAN_CONTROLLER_PACKAGE_NAME announcement-controller)
set(CPACK_DEBIAN_CONTROLLER_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_CONTROLLER_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_CONTROLLER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# Plugins that GStreamer loads by name, and what makes the user and the folders.
string(JOIN ", " CPACK_DEBIAN_CONTROLLER_PACKAGE_DEPENDS
    gstreamer1.0-plugins-base
    gstreamer1.0-plugins-good
    gstreamer1.0-alsa
    "systemd | systemd-standalone-sysusers"
    "systemd | systemd-standalone-tmpfiles"
    "init-system-helpers (>= 1.52)")
# AAC, as phones record it. Without it the page decodes such files itself, so 11 MB need not be taken.
# And the voice of houses that name no other.
set(CPACK_DEBIAN_CONTROLLER_PACKAGE_RECOMMENDS "gstreamer1.0-plugins-bad, espeak-ng")
set(CPACK_COMPONENT_CONTROLLER_DESCRIPTION
    "announcements in the rooms and on the screens of a house
Plays announcements as sound in the rooms of a house and shows them as popups
on the pages of its screens, on demand, and puts everything back as it was.
Programs and people drive it over HTTP and WebSocket.")
set(CPACK_DEBIAN_CONTROLLER_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_CONTROLLER_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/conffiles
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/postinst
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/prerm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm
    ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers)
include(CPack)
