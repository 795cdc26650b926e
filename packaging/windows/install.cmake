# What a Windows installation holds: one folder with the program, the tool, their data files and
# the licence terms side by side, as the build folder has them. The programs find their data
# beside themselves and write nothing there: what the program keeps for the user goes into the
# user's AppData and registry.
install(TARGETS sparkwright sparkwright-cli RUNTIME DESTINATION .)
install(FILES ${CMAKE_BINARY_DIR}/default.cds ${CMAKE_BINARY_DIR}/hints.cdh ${SPARKWRIGHT_QM} DESTINATION .)
install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION . RENAME LICENSE.txt)

# The command-line tool draws its sheets and graphs with the fonts in the fonts folder beside it,
# the same DejaVu Sans as on Linux, so that they come out alike; the folder stands beside it in the
# build folder too. Without DejaVu at hand (as on a Windows machine) the tool uses the system's
# fonts instead.
set(SPARKWRIGHT_DEJAVU_DIR /usr/share/fonts/truetype/dejavu CACHE PATH "Folder with DejaVuSans.ttf for the tool's drawings")
set(SPARKWRIGHT_DEJAVU_LICENSE /usr/share/doc/fonts-dejavu-core/copyright CACHE FILEPATH "The DejaVu fonts' licence")
if(EXISTS ${SPARKWRIGHT_DEJAVU_DIR}/DejaVuSans.ttf AND EXISTS ${SPARKWRIGHT_DEJAVU_LICENSE})
    set(SPARKWRIGHT_FONTS)
    foreach(font DejaVuSans.ttf DejaVuSans-Bold.ttf)
        add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/fonts/${font}
            COMMAND ${CMAKE_COMMAND} -E copy ${SPARKWRIGHT_DEJAVU_DIR}/${font} ${CMAKE_BINARY_DIR}/fonts/${font}
            DEPENDS ${SPARKWRIGHT_DEJAVU_DIR}/${font} VERBATIM)
        list(APPEND SPARKWRIGHT_FONTS ${CMAKE_BINARY_DIR}/fonts/${font})
    endforeach()
    add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/fonts/LICENSE.txt
        COMMAND ${CMAKE_COMMAND} -E copy ${SPARKWRIGHT_DEJAVU_LICENSE} ${CMAKE_BINARY_DIR}/fonts/LICENSE.txt
        DEPENDS ${SPARKWRIGHT_DEJAVU_LICENSE} VERBATIM)
    add_custom_target(fonts ALL DEPENDS ${SPARKWRIGHT_FONTS} ${CMAKE_BINARY_DIR}/fonts/LICENSE.txt)
    install(FILES ${SPARKWRIGHT_FONTS} ${CMAKE_BINARY_DIR}/fonts/LICENSE.txt DESTINATION fonts)
endif()
