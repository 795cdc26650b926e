target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/cdataholder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cfileerror.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cfilemanifest.cpp
    ${CMAKE_CURRENT_LIST_DIR}/csingleinstance.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cstartup.cpp
    ${CMAKE_CURRENT_LIST_DIR}/errorgui.cpp
)
