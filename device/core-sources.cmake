target_sources(sparkwright-core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/deviceframe.cpp
    ${CMAKE_CURRENT_LIST_DIR}/devicelog.cpp
    ${CMAKE_CURRENT_LIST_DIR}/iwaitform.h
    ${CMAKE_CURRENT_LIST_DIR}/iimportreceiver.h
    ${CMAKE_CURRENT_LIST_DIR}/cwaitrecord.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ccommunicator.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cpinger.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cimporter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ccalibrator.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cbridgecomm.cpp
    ${CMAKE_CURRENT_LIST_DIR}/serialports.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cvirtualcdi.cpp
)
# The bridge is a serial port; no widgets on this side.
target_link_libraries(sparkwright-core PUBLIC Qt5::SerialPort)
