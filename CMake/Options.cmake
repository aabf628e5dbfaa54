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

# So that the libraries can go into a shared library of the caller's, and the program is loaded at
# an address that cannot be guessed.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

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
              -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
              # What is not used is not linked into a program (see zek_program_options).
              -ffunction-sections
              -fdata-sections)

# Files over 2 GiB, also where a long has 32 bits.
target_compile_definitions(zek_options INTERFACE _FILE_OFFSET_BITS=64)

if(ZEK_WARNINGS_AS_ERRORS)
    target_compile_options(zek_options INTERFACE -Werror)
endif()

# Either the sanitizers, which see more, or the guards that a release can afford.
if(ZEK_SANITIZE)
    target_compile_options(zek_options INTERFACE -fsanitize=${ZEK_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
    target_compile_definitions(zek_options INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(zek_options INTERFACE -fsanitize=${ZEK_SANITIZE})
else()
    include(CheckCXXCompilerFlag)
    target_compile_options(zek_options INTERFACE -fstack-protector-strong)
    check_cxx_compiler_flag(-fcf-protection ZEK_HAS_CONTROL_FLOW_PROTECTION)
    if(ZEK_HAS_CONTROL_FLOW_PROTECTION)
        target_compile_options(zek_options INTERFACE -fcf-protection)
    endif()
    check_cxx_compiler_flag(-fstack-clash-protection ZEK_HAS_STACK_CLASH_PROTECTION)
    if(ZEK_HAS_STACK_CLASH_PROTECTION)
        target_compile_options(zek_options INTERFACE -fstack-clash-protection)
    endif()
    # The library's checks of buffer sizes work only in optimised code.
    target_compile_options(
        zek_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
endif()

# Linked statically, the program starts in half the time, and starting is most of what it does for
# a small model.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS -fPIE)
set(CMAKE_REQUIRED_LINK_OPTIONS -static-pie)
check_cxx_source_compiles("int main() { return 0; }" ZEK_CAN_LINK_STATICALLY)
unset(CMAKE_REQUIRED_FLAGS)
unset(CMAKE_REQUIRED_LINK_OPTIONS)
if(ZEK_SANITIZE)
    set(ZEK_STATIC_DEFAULT OFF)
else()
    set(ZEK_STATIC_DEFAULT ${ZEK_CAN_LINK_STATICALLY})
endif()
option(ZEK_STATIC "Link ZEKTexComp with static libraries alone" ${ZEK_STATIC_DEFAULT})

# How the program is linked. Code and constants share a mapping that nobody can write to: two mappings
# less make a run over a small model 2 % shorter.
add_library(zek_program_options INTERFACE)
target_link_libraries(zek_program_options INTERFACE zek_options)
target_link_options(
    zek_program_options INTERFACE -Wl,--gc-sections -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack
                                  -Wl,-z,noseparate-code
    $<IF:$<BOOL:${ZEK_STATIC}>,-static-pie,-pie>)
