target_sources(sparkwright-core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/axismapping.cpp
    ${CMAKE_CURRENT_LIST_DIR}/mapplotter.cpp
)
# The graph's "Invalid" badge carries the warning image.
target_link_libraries(sparkwright-core PUBLIC sparkwright-images)
