# How everything in this tree is compiled: the interface target zek_options.

# An optimised build unless asked otherwise. Assertions stay in every build type: one of them is
# documented behaviour, so the NDEBUG that CMake adds to its optimised types is taken out.
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
foreach(TYPE IN ITEMS RELEASE RELWITHDEBINFO MINSIZEREL)
    string(REPLACE "-DNDEBUG" "" CMAKE_CXX_FLAGS_${TYPE} "${CMAKE_CXX_FLAGS_${TYPE}}")
endforeach()

set(CMAKE_CXX_EXTENSIONS OFF)
set(ZEK_LIBRARY_PREFIX ZEK)

add_library(zek_options INTERFACE)
target_compile_options(
    zek_options
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wshadow
              # Plain IEEE arithmetic on every processor: no fused multiply-add.
              -ffp-contract=off
              # The same bytes from every build folder.
              -ffile-prefix-map=${PROJECT_SOURCE_DIR}/Source/=
              -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)

if(ZEK_WARNINGS_AS_ERRORS)
    target_compile_options(zek_options INTERFACE -Werror)
endif()

if(ZEK_SANITIZE)
    target_compile_options(zek_options INTERFACE -fsanitize=${ZEK_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
    target_compile_definitions(zek_options INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(zek_options INTERFACE -fsanitize=${ZEK_SANITIZE})
endif()
