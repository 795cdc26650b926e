# Installs the build into a scratch DESTDIR and runs the installed tool against the installed data,
# from a working directory that holds none of it: the installation must find its own files.
# Called by ctest with BUILD_DIR, PROFILE (a .cdi file) and WORK_DIR.
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR}/elsewhere)
set(root ${WORK_DIR}/root)

execute_process(COMMAND ${CMAKE_COMMAND} -E env DESTDIR=${root}
        ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix /usr
    RESULT_VARIABLE status OUTPUT_QUIET)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "cmake --install failed: ${status}")
endif()

foreach(installed
        bin/sparkwright bin/sparkwright-cli
        share/sparkwright/default.cds share/sparkwright/hints.cdh share/sparkwright/lang_de.qm
        share/applications/example.sparkwright.Sparkwright.desktop
        share/metainfo/example.sparkwright.Sparkwright.metainfo.xml
        share/icons/hicolor/16x16/apps/sparkwright.png share/icons/hicolor/256x256/apps/sparkwright.png
        share/icons/hicolor/scalable/apps/sparkwright.svg
        lib/udev/rules.d/70-sparkwright-cp210x.rules
        share/doc/sparkwright/copyright share/doc/sparkwright/changelog.gz
        share/man/man1/sparkwright.1.gz share/man/man1/sparkwright-cli.1.gz
        share/bash-completion/completions/sparkwright-cli)
    if(NOT EXISTS ${root}/usr/${installed})
        message(FATAL_ERROR "not installed: ${installed}")
    endif()
endforeach()

function(run_installed expected_pattern)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK_DIR}/elsewhere
        RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT status EQUAL 0 OR NOT out MATCHES "${expected_pattern}")
        message(FATAL_ERROR "${ARGN}\nexit ${status}\n${out}\n${err}")
    endif()
endfunction()

set(bin ${root}/usr/bin)
# The factory library and the hints as installed read back.
run_installed("\"libraryValue\"" ${bin}/sparkwright-cli dump ${root}/usr/share/sparkwright/default.cds)
run_installed("\"catalogValue\"" ${bin}/sparkwright-cli dump ${root}/usr/share/sparkwright/hints.cdh)
# The sheet needs the library and, in German, the translation: both from the share folder.
run_installed("" ${bin}/sparkwright-cli print ${PROFILE} ${WORK_DIR}/elsewhere/sheet.pdf --language de)
if(NOT EXISTS ${WORK_DIR}/elsewhere/sheet.pdf)
    message(FATAL_ERROR "the installed tool printed no sheet")
endif()
# The program's version query loads both data files before anything else.
run_installed("^Sparkwright.exe;[0-9]+#default.cds;[0-9]+#lang_de.qm;[0-9]+#Qt5PrintSupport.dll;1#hints.cdh;[0-9]+\n$"
    ${bin}/sparkwright -v)
