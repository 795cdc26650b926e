target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/cdisclaimeracceptance.cpp
    ${CMAKE_CURRENT_LIST_DIR}/disclaimerdialog.cpp
)
