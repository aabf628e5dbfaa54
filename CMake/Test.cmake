# One call per test program:
#
#   zek_add_test(NAME SOURCES a.cpp ... LINKS target ...)
#
# builds the GoogleTest program NAME and registers it with ctest under the same name. Where a program
# has many sources, what most of them include is compiled once; that each names all that it uses shows
# in the presets that do without (CMAKE_DISABLE_PRECOMPILE_HEADERS).
find_package(GTest REQUIRED)
include(GoogleTest)

function(zek_add_test NAME)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;LINKS")

    add_executable(${NAME} ${TEST_SOURCES})
    target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR}/Tests)
    target_link_libraries(${NAME} PRIVATE zek_options ${TEST_LINKS} GTest::gtest_main)
    list(LENGTH TEST_SOURCES SOURCE_COUNT)
    if(SOURCE_COUNT GREATER 3)
        target_precompile_headers(${NAME} PRIVATE <algorithm> <filesystem> <fstream> <gtest/gtest.h>)
    endif()
    add_test(NAME ${NAME} COMMAND ${NAME})
    set_tests_properties(${NAME} PROPERTIES TIMEOUT 1800)
endfunction()
