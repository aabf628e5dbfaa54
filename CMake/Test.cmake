# One call per test program:
#
#   zek_add_test(NAME SOURCES a.cpp ... LINKS target ...)
#
# builds the GoogleTest program NAME and registers it with ctest under the same name.
find_package(GTest REQUIRED)
include(GoogleTest)

function(zek_add_test NAME)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;LINKS")

    add_executable(${NAME} ${TEST_SOURCES})
    target_include_directories(${NAME} PRIVATE ${PROJECT_SOURCE_DIR}/Tests)
    target_link_libraries(${NAME} PRIVATE zek_options ${TEST_LINKS} GTest::gtest_main)
    add_test(NAME ${NAME} COMMAND ${NAME})
    set_tests_properties(${NAME} PROPERTIES TIMEOUT 900)
endfunction()
