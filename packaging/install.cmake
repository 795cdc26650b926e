# What an installation holds (the folders: install-dirs.cmake): the program and the tool, their
# data, the menu entry, the AppStream data, the icon at every size the project draws, and the
# udev rule that lets the user at the seat reach the bridge; below them the licence terms, the
# changelog, the manual pages and the bash completion of the tool.

install(TARGETS sparkwright sparkwright-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# A stripped installation (as the package's) also drops the compiler's notes, as Debian's own
# packages do.
install(CODE "
    if(CMAKE_INSTALL_DO_STRIP)
        foreach(program sparkwright sparkwright-cli)
            execute_process(COMMAND \"${CMAKE_STRIP}\" --remove-section=.comment --remove-section=.note
                \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/\${program}\"
                RESULT_VARIABLE status)
            if(NOT status EQUAL 0)
                message(FATAL_ERROR \"strip failed on \${program}\")
            endif()
        endforeach()
    endif()")
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

# The licence terms, the changelog and the manual pages in the places and forms Debian expects
# them. The changelog is NEWS.md written as a Debian changelog (the form apt and lintian read for
# a package of its own making). The man pages and the changelog are compressed at build time,
# without names or times in the gzip header, so that the same sources give the same package.
set(SPARKWRIGHT_DOC_INSTALL_DIR ${CMAKE_INSTALL_DATADIR}/doc/sparkwright)
set(SPARKWRIGHT_PACKAGE_CONTACT "Sparkwright <support@sparkwright.example>")
find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/changelog
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/news-to-changelog.py ${CMAKE_SOURCE_DIR}/NEWS.md
        ${CMAKE_BINARY_DIR}/changelog "${SPARKWRIGHT_PACKAGE_CONTACT}"
    DEPENDS ${CMAKE_SOURCE_DIR}/NEWS.md ${CMAKE_SOURCE_DIR}/tools/news-to-changelog.py
    COMMENT "Writing the changelog from NEWS.md" VERBATIM)
set(SPARKWRIGHT_COMPRESSED)
foreach(source ${CMAKE_BINARY_DIR}/changelog:doc/changelog
        ${CMAKE_SOURCE_DIR}/packaging/man/sparkwright.1:man/sparkwright.1
        ${CMAKE_SOURCE_DIR}/packaging/man/sparkwright-cli.1:man/sparkwright-cli.1)
    string(REPLACE ":" ";" source ${source})
    list(GET source 0 input)
    list(GET source 1 output)
    set(output ${CMAKE_BINARY_DIR}/${output})
    add_custom_command(OUTPUT ${output}.gz
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/doc ${CMAKE_BINARY_DIR}/man
        COMMAND ${CMAKE_COMMAND} -E copy ${input} ${output}
        COMMAND gzip -9nf ${output}
        DEPENDS ${input}
        COMMENT "Compressing ${output}" VERBATIM)
    list(APPEND SPARKWRIGHT_COMPRESSED ${output}.gz)
endforeach()
add_custom_target(compressed-docs ALL DEPENDS ${SPARKWRIGHT_COMPRESSED})

install(FILES ${CMAKE_SOURCE_DIR}/packaging/copyright ${CMAKE_BINARY_DIR}/doc/changelog.gz
    DESTINATION ${SPARKWRIGHT_DOC_INSTALL_DIR})
install(FILES ${CMAKE_BINARY_DIR}/man/sparkwright.1.gz ${CMAKE_BINARY_DIR}/man/sparkwright-cli.1.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/completion/sparkwright-cli
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
