# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
# A Debian package: cpack --config build/release/CPackConfig.cmake
configure_file(Resources/Package/changelog.in changelog @ONLY)
compressed(${PROJECT_BINARY_DIR}/changelog)
install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lumora COMPONENT desktop)
install(FILES Resources/Package/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lumora COMPONENT desktop)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lumora)
set(CPACK_PACKAGE_CONTACT "The Lumora authors <authors@lumora.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "battery reminders and thirty days of charge history")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Lumora sits in the tray, watches the battery and the adapter of a laptop, and
reminds through the desktop's notifications: to unplug at a chosen limit, to
plug in when the battery is low, to try the power-saving mode, and when the
battery's health has gone down. It only reminds; it controls nothing.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://lumora.example")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "libcanberra-pulse, libglib2.0-bin, power-profiles-daemon, qt6-translations-l10n, qt6-wayland, sound-theme-freedesktop, upower, xdg-desktop-portal")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
