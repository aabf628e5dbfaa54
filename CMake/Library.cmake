# One call per library. A library names its own sources and headers and the libraries that it
# builds on; nothing else of the tree is linked into it, so what is missing here does not link.
#
#   zek_add_library(NAME SOURCES a.cpp ... HEADERS a.h ... [BUILDS_ON Other ...])
#
# defines the static library NAME and its alias ZEKTexComp::NAME. A library without sources is
# an interface library.
function(zek_add_library NAME)
    cmake_parse_arguments(PARSE_ARGV 1 LIBRARY "" "" "SOURCES;HEADERS;BUILDS_ON")

    if(LIBRARY_SOURCES)
        add_library(${NAME} STATIC ${LIBRARY_SOURCES})
        set(SCOPE PUBLIC)
        target_link_libraries(${NAME} PRIVATE $<BUILD_INTERFACE:zek_options>)
        # libZEKMath3D.a, and libZEKOverwriter.a, whose name starts with the prefix as it is.
        string(REGEX REPLACE "^${ZEK_LIBRARY_PREFIX}" "" BARE_NAME ${NAME})
        set_target_properties(${NAME} PROPERTIES OUTPUT_NAME ${ZEK_LIBRARY_PREFIX}${BARE_NAME})
    else()
        add_library(${NAME} INTERFACE)
        set(SCOPE INTERFACE)
    endif()
    add_library(ZEKTexComp::${NAME} ALIAS ${NAME})

    target_compile_features(${NAME} ${SCOPE} cxx_std_17)
    target_include_directories(${NAME} ${SCOPE} $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/Source>)
    foreach(OTHER IN LISTS LIBRARY_BUILDS_ON)
        target_link_libraries(${NAME} ${SCOPE} ZEKTexComp::${OTHER})
    endforeach()

    set_property(GLOBAL APPEND PROPERTY ZEK_LIBRARIES ${NAME})
    foreach(HEADER IN LISTS LIBRARY_HEADERS)
        set_property(GLOBAL APPEND PROPERTY ZEK_HEADERS ${CMAKE_CURRENT_SOURCE_DIR}/${HEADER})
    endforeach()
endfunction()
