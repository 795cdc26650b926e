target_sources(sparkwright-core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/profile.cpp
    ${CMAKE_CURRENT_LIST_DIR}/profilecomparison.cpp
    ${CMAKE_CURRENT_LIST_DIR}/mapvalidation.cpp
    ${CMAKE_CURRENT_LIST_DIR}/taggedvalues.cpp
    ${CMAKE_CURRENT_LIST_DIR}/profilerecord.cpp
    ${CMAKE_CURRENT_LIST_DIR}/container.cpp
    ${CMAKE_CURRENT_LIST_DIR}/deviceimage.cpp
    ${CMAKE_CURRENT_LIST_DIR}/profilefile.cpp
    ${CMAKE_CURRENT_LIST_DIR}/defaultlibrary.cpp
    ${CMAKE_CURRENT_LIST_DIR}/hintcatalog.cpp
    ${CMAKE_CURRENT_LIST_DIR}/profilejson.cpp
    ${CMAKE_CURRENT_LIST_DIR}/fileerror.cpp
    ${CMAKE_CURRENT_LIST_DIR}/safefilewriter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/recentprofiles.cpp
)
