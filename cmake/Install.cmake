# What `cmake --install` puts where for those who run the agent or write drivers and hosts: the module, the framework with
# its headers, the rehearsal, and a package config, found by `find_package(AnnouncementAgent)`.
include(CMakePackageConfigHelpers)

set(HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/announcement-agent)
set(MODULES ${CMAKE_INSTALL_LIBDIR}/announcement-agent)
set(CONFIG ${CMAKE_INSTALL_LIBDIR}/cmake/AnnouncementAgent)

# The framework stands one folder above the module and beside the programs' folder.
set_target_properties(announcement_agent PROPERTIES INSTALL_RPATH "$ORIGIN/..")
set_target_properties(announcement_framework PROPERTIES EXPORT_NAME framework)

install(TARGETS announcement_agent LIBRARY DESTINATION ${MODULES} COMPONENT agent)
install(TARGETS host announcement_framework EXPORT AnnouncementAgent
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT agent)
install(TARGETS announcement-rehearsal RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT agent)
install(FILES ${CMAKE_SOURCE_DIR}/docs/announcement-rehearsal.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT agent)

install(DIRECTORY ${CMAKE_SOURCE_DIR}/host DESTINATION ${HEADERS} COMPONENT agent FILES_MATCHING PATTERN "*.h")
# What programs use; the other headers of the framework are its own business.
set(FRAMEWORK_HEADERS AssertWriter.h CmdMessage.h DriverModule.h IDriverHost.h InstanceRegistry.h XmlText.h)
list(TRANSFORM FRAMEWORK_HEADERS PREPEND ${CMAKE_SOURCE_DIR}/framework/)
install(FILES ${FRAMEWORK_HEADERS} DESTINATION ${HEADERS}/framework COMPONENT agent)

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/AnnouncementAgentConfig.cmake.in
    ${CMAKE_BINARY_DIR}/AnnouncementAgentConfig.cmake INSTALL_DESTINATION ${CONFIG} PATH_VARS MODULES)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/AnnouncementAgentConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/AnnouncementAgentConfig.cmake
    ${CMAKE_BINARY_DIR}/AnnouncementAgentConfigVersion.cmake DESTINATION ${CONFIG} COMPONENT agent)
install(EXPORT AnnouncementAgent NAMESPACE AnnouncementAgent:: FILE AnnouncementAgentTargets.cmake
    DESTINATION ${CONFIG} COMPONENT agent)
