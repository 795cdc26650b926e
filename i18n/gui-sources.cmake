target_sources(sparkwright-gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/itranslatable.h
    ${CMAKE_CURRENT_LIST_DIR}/clanguageswitcher.cpp
    ${CMAKE_CURRENT_LIST_DIR}/clanguagemenu.cpp
)
