target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ccomparisonparent.h
    ${CMAKE_CURRENT_LIST_DIR}/icontinuemain.h
    ${CMAKE_CURRENT_LIST_DIR}/continueform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/defaultprofilesgui.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cprofileitem.cpp
    ${CMAKE_CURRENT_LIST_DIR}/comparisonform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/multigraphform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/wizardform.cpp
)
