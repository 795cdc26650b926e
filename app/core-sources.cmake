target_sources(sparkwright-core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/datafilelocation.cpp
)
