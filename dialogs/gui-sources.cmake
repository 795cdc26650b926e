target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/cdisclaimeracceptance.cpp
    ${CMAKE_CURRENT_LIST_DIR}/disclaimerdialog.cpp
    ${CMAKE_CURRENT_LIST_DIR}/aboutdialog.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cupdater.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cweblinks.cpp
)
