target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/waitform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/devicesform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/writeconfirmationdialog.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cdeviceflow.cpp
)
