target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/mainwindow.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cuserprompts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/suggestedfilename.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cbrowserwidget.h
    ${CMAKE_CURRENT_LIST_DIR}/ibrowsermain.h
    ${CMAKE_CURRENT_LIST_DIR}/iuserprompts.h
)
