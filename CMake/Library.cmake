# One call per library. A library names its own sources and headers and the libraries that it
# builds on; nothing else of the tree is linked into it, so what is missing here does not link.
#
#   zek_add_library(NAME SOURCES a.cpp ... HEADERS a.h ... [INTERNAL] [BUILDS_ON Other ...])
#
# defines the static library zek_NAME, so that a project that this tree is part of may have a target
# NAME of its own. To everybody else it is ZEKTexComp::NAME, installed or not. One that is INTERNAL
# is part of a program and never installed.
function(zek_add_library NAME)
    cmake_parse_arguments(PARSE_ARGV 1 LIBRARY "INTERNAL" "" "SOURCES;HEADERS;BUILDS_ON")

    set(TARGET zek_${NAME})
    add_library(${TARGET} STATIC ${LIBRARY_SOURCES})
    add_library(ZEKTexComp::${NAME} ALIAS ${TARGET})
    # libZEKMath3D.a, and libZEKOverwriter.a, whose name starts with the prefix as it is.
    string(REGEX REPLACE "^${ZEK_LIBRARY_PREFIX}" "" BARE_NAME ${NAME})
    set_target_properties(
        ${TARGET} PROPERTIES EXPORT_NAME ${NAME} OUTPUT_NAME ${ZEK_LIBRARY_PREFIX}${BARE_NAME})

    target_compile_features(${TARGET} PUBLIC cxx_std_17)
    target_include_directories(${TARGET} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/Source>)
    target_link_libraries(${TARGET} PRIVATE $<BUILD_INTERFACE:zek_options>)
    foreach(OTHER IN LISTS LIBRARY_BUILDS_ON)
        target_link_libraries(${TARGET} PUBLIC ZEKTexComp::${OTHER})
    endforeach()

    if(LIBRARY_INTERNAL)
        return()
    endif()
    set_property(GLOBAL APPEND PROPERTY ZEK_LIBRARIES ${TARGET})
    foreach(HEADER IN LISTS LIBRARY_HEADERS)
        set_property(GLOBAL APPEND PROPERTY ZEK_HEADERS ${CMAKE_CURRENT_SOURCE_DIR}/${HEADER})
    endforeach()
endfunction()
