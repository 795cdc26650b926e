target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/iprofileeditormain.h
    ${CMAKE_CURRENT_LIST_DIR}/chintlabel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/tableform.cpp
    ${CMAKE_CURRENT_LIST_DIR}/graphform.cpp
)
