# What an installation holds (the folders: install-dirs.cmake): the program and the tool, their
# data, the menu entry, the AppStream data, the icon at every size the project draws, and the
# udev rule that lets the user at the seat reach the bridge.

install(TARGETS sparkwright sparkwright-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_BINARY_DIR}/default.cds ${CMAKE_BINARY_DIR}/hints.cdh ${SPARKWRIGHT_QM}
    DESTINATION ${SPARKWRIGHT_DATA_INSTALL_DIR})

set(SPARKWRIGHT_DESKTOP_FILE ${CMAKE_SOURCE_DIR}/packaging/${SPARKWRIGHT_APP_ID}.desktop)
set(SPARKWRIGHT_METAINFO_FILE ${CMAKE_SOURCE_DIR}/packaging/${SPARKWRIGHT_APP_ID}.metainfo.xml)
install(FILES ${SPARKWRIGHT_DESKTOP_FILE} DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${SPARKWRIGHT_METAINFO_FILE} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
foreach(size 16 24 32 48 64 128 256)
    install(FILES ${CMAKE_SOURCE_DIR}/resources/images/app-${size}.png
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps RENAME sparkwright.png)
endforeach()
install(FILES ${CMAKE_SOURCE_DIR}/resources/svg/app.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME sparkwright.svg)

# udev reads its rules from lib/udev/rules.d under the prefix, whatever the library folder is.
install(FILES ${CMAKE_SOURCE_DIR}/packaging/70-sparkwright-cp210x.rules DESTINATION lib/udev/rules.d)
