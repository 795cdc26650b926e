target_sources(sparkwright-core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/profilesummary.cpp
    ${CMAKE_CURRENT_LIST_DIR}/summarysheet.cpp
)
# The printed sheet names the program version in its header line.
set_property(SOURCE ${CMAKE_CURRENT_LIST_DIR}/summarysheet.cpp APPEND PROPERTY
    COMPILE_DEFINITIONS SPARKWRIGHT_VERSION="${PROJECT_VERSION}")
