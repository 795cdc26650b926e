# Where an installation puts the program and what it ships with: the program and the tool in bin,
# their data in share/sparkwright, found from bin as SPARKWRIGHT_DATA_FROM_BIN.
include(GNUInstallDirs)

set(SPARKWRIGHT_APP_ID example.sparkwright.Sparkwright)
set(SPARKWRIGHT_DATA_INSTALL_DIR ${CMAKE_INSTALL_DATADIR}/sparkwright)
file(RELATIVE_PATH SPARKWRIGHT_DATA_FROM_BIN
    ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${SPARKWRIGHT_DATA_INSTALL_DIR})
