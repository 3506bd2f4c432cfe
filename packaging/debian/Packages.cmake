# Two Debian packages, one for each component.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR orskapp)
set(CPACK_PACKAGE_VERSION ${ORSKAPP_VERSION})
set(CPACK_PACKAGE_CONTACT "orskapp maintainers <maintainers@orskapp.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# CPack creates the prefix with the caller's umask.
file(CONFIGURE OUTPUT prefix_mode.cmake @ONLY CONTENT [[
file(GLOB prefixes ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr)
file(CHMOD ${prefixes} PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
]])
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_BINARY_DIR}/prefix_mode.cmake)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL program simulator)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# Dependencies come from the files. The client library belongs to no package: the interface stands for it.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/interface)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME orskapp)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "orskapp-simulator")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "console for a time-synchronisation service
Each run carries out one command on the service, through the service's client
library liborsksapi.so.1, which is not part of this package.")

set(CPACK_DEBIAN_SIMULATOR_PACKAGE_NAME orskapp-simulator)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_DEPENDS "orskapp (= ${ORSKAPP_VERSION}-1)")
set(CPACK_COMPONENT_SIMULATOR_DESCRIPTION "simulated service for the orskapp console
Takes the place of the service, so that operators can rehearse sessions
and scripts, failures included, without it.")

include(CPack)
