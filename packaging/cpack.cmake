# The Debian package that scripts/package.sh builds: everything the installation holds, under
# /usr, with the shared libraries it needs found by dpkg-shlibdeps.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME sparkwright)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Sparkwright")
set(CPACK_PACKAGE_CONTACT ${SPARKWRIGHT_PACKAGE_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "edit and program the ignition profiles of a motorbike's CDI")
set(CPACK_PACKAGE_DESCRIPTION "Sparkwright creates ignition profiles for a programmable CDI
(capacitor discharge ignition) from factory templates, edits their advance
map, compares, saves and prints them, and writes them into the CDI over its
CP210x USB serial bridge and reads them back. In English and German.")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://sparkwright.example/")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt's own German for the file and print dialogs, from the translations of the Qt built with.
if(QT_VERSION_MAJOR EQUAL 6)
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n")
else()
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qttranslations5-l10n")
endif()
# The udev rules are reloaded when the package comes and when it goes.
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/packaging/postinst ${CMAKE_SOURCE_DIR}/packaging/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
include(CPack)
