target_sources(sparkwright-core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/profilesummary.cpp
    ${CMAKE_CURRENT_LIST_DIR}/summarysheet.cpp
)
