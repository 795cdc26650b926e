# The Windows installer that scripts/windows.sh builds with NSIS: Sparkwright-VERSION-win64.exe.
# It installs into Program Files, adds a Start-menu entry and an uninstaller, and makes the
# program open .cdi files. Installed by an administrator, the entries are everyone's (HKLM and
# the common Start menu); otherwise the user's own (SHCTX follows the installer's choice).
set(CPACK_GENERATOR NSIS)
# The NSIS commands below reach the installer script as written: quotes, backslashes and all.
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_NAME Sparkwright)
set(CPACK_PACKAGE_VENDOR Sparkwright)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "edit and program the ignition profiles of a motorbike's CDI")
set(CPACK_PACKAGE_FILE_NAME Sparkwright-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_INSTALL_DIRECTORY Sparkwright)
set(CPACK_PACKAGE_INSTALL_REGISTRY_KEY Sparkwright)
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_NSIS_INSTALL_ROOT "$PROGRAMFILES64")
set(CPACK_NSIS_PACKAGE_NAME Sparkwright)
set(CPACK_NSIS_DISPLAY_NAME Sparkwright)
set(CPACK_NSIS_MUI_ICON ${CMAKE_SOURCE_DIR}/resources/images/app.ico)
set(CPACK_NSIS_MUI_UNIICON ${CMAKE_SOURCE_DIR}/resources/images/app.ico)
set(CPACK_NSIS_INSTALLED_ICON_NAME Sparkwright.exe)
set(CPACK_NSIS_URL_INFO_ABOUT "https://sparkwright.example/")
set(CPACK_NSIS_CONTACT "support@sparkwright.example")
set(CPACK_NSIS_ENABLE_UNINSTALL_BEFORE_INSTALL ON)
set(CPACK_NSIS_EXECUTABLES_DIRECTORY .)
set(CPACK_PACKAGE_EXECUTABLES Sparkwright Sparkwright)
set(CPACK_NSIS_MANIFEST_DPI_AWARE ON)
# A 64-bit installer for 64-bit programs; it also runs where only 64-bit Windows programs do.
set(CPACK_NSIS_DEFINES "Target amd64-unicode")
# The installed programs without their symbols: a fraction of the size.
set(CPACK_STRIP_FILES ON)
# .cdi files open in the program (ProgID Sparkwright.Profile). Uninstalling removes the ProgID and
# gives .cdi back only while it still points to it.
set(CPACK_NSIS_EXTRA_INSTALL_COMMANDS [=[
  WriteRegStr SHCTX "Software\Classes\.cdi" "" "Sparkwright.Profile"
  WriteRegStr SHCTX "Software\Classes\.cdi\OpenWithProgids" "Sparkwright.Profile" ""
  WriteRegStr SHCTX "Software\Classes\Sparkwright.Profile" "" "Sparkwright ignition profile"
  WriteRegStr SHCTX "Software\Classes\Sparkwright.Profile\DefaultIcon" "" "$INSTDIR\Sparkwright.exe,0"
  WriteRegStr SHCTX "Software\Classes\Sparkwright.Profile\shell\open\command" "" '"$INSTDIR\Sparkwright.exe" "%1"'
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
]=])
set(CPACK_NSIS_EXTRA_UNINSTALL_COMMANDS [=[
  ReadRegStr $0 SHCTX "Software\Classes\.cdi" ""
  StrCmp $0 "Sparkwright.Profile" 0 +2
    DeleteRegValue SHCTX "Software\Classes\.cdi" ""
  DeleteRegValue SHCTX "Software\Classes\.cdi\OpenWithProgids" "Sparkwright.Profile"
  DeleteRegKey /ifempty SHCTX "Software\Classes\.cdi\OpenWithProgids"
  DeleteRegKey /ifempty SHCTX "Software\Classes\.cdi"
  DeleteRegKey SHCTX "Software\Classes\Sparkwright.Profile"
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
]=])
include(CPack)
