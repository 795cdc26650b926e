target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/iprofileeditormain.h
    ${CMAKE_CURRENT_LIST_DIR}/chintlabel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cblinker.cpp
    ${CMAKE_CURRENT_LIST_DIR}/tableform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/graphform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/flagsform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/nameform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/notesform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/hintdialog.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cprofileedit.cpp
    ${CMAKE_CURRENT_LIST_DIR}/editorform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/customform.cpp
)
