# The Debian package: cpack -G DEB in a build configured with CMAKE_INSTALL_PREFIX=/usr (scripts/package).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zq318-utility)
set(CPACK_PACKAGE_VENDOR Korvex)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${ZQ_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PROJECT_HOMEPAGE_URL})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The window needs a platform plugin, which no library it links pulls in.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The summary, then the extended description; CPack indents it and marks blank lines.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "clone utility for the Korvex ZQ-318 handheld radio
The desktop program with which owners of the Korvex ZQ-318 handheld VHF FM
radio read its memory over a serial clone cable, edit its 200 memory
channels, the VFO, CALL and repeater records, the function settings and the
nine DTMF autodial memories, keep everything in clone files (*.318),
exchange channels with spreadsheets as CSV, and write it all back.

Beside the window come zq318, a command-line tool for backups and scripts,
and zq318-radio, a virtual radio on a pseudo-terminal for trying it all
without hardware. A udev rule lets members of the group dialout use the
USB serial adapters that clone cables are built on and keeps ModemManager
away from them.")
include(CPack)
