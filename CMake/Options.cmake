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

# Whoever builds with a sanitizer names it in ZEK_SANITIZE, or in the compiler's flags.
if(ZEK_SANITIZE OR CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
    set(ZEK_IS_SANITIZED ON)
else()
    set(ZEK_IS_SANITIZED OFF)
endif()

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)

# Asks whether code that a guard concerns can be compiled with some options, and linked without them:
# the guards of the stack and of buffers call functions that not every C library has, and some
# compilers know a guard but fail at a large stack.
function(zek_check_links RESULT)
    set(CMAKE_REQUIRED_DEFINITIONS ${ARGN})
    check_cxx_source_compiles(
        "#include <cstdio>
        #include <cstring>
        int main(int count, char** words)
        {
            char text[65536];
            std::memcpy(text, words[0], static_cast<std::size_t>(count));
            return std::sprintf(text, \"%s\", words[0]);
        }"
        ${RESULT})
endfunction()

# Adds those of some compiler options to an interface target that the compiler knows.
function(zek_add_known_compile_options TARGET)
    foreach(OPTION IN LISTS ARGN)
        string(MAKE_C_IDENTIFIER ZEK_KNOWS${OPTION} IS_KNOWN)
        check_cxx_compiler_flag(${OPTION} ${IS_KNOWN})
        if(${IS_KNOWN})
            zek_check_links(${IS_KNOWN}_LINKS ${OPTION})
        endif()
        if(${IS_KNOWN}_LINKS)
            target_compile_options(${TARGET} INTERFACE ${OPTION})
        endif()
    endforeach()
endfunction()

# The same for the linker.
function(zek_add_known_link_options TARGET)
    foreach(OPTION IN LISTS ARGN)
        string(MAKE_C_IDENTIFIER ZEK_KNOWS_${OPTION} IS_KNOWN)
        check_linker_flag(CXX ${OPTION} ${IS_KNOWN})
        if(${IS_KNOWN})
            target_link_options(${TARGET} INTERFACE ${OPTION})
        endif()
    endforeach()
endfunction()

# Each source that needs an inline function may have a copy of it, of which the linker keeps one. For
# Windows g++ 12 counts on the registers that its own copy leaves alone, which is not always that one.
if(MINGW)
    zek_add_known_compile_options(zek_options -fno-ipa-ra)
endif()

# Either the sanitizers, which see more, or the guards that a release can afford.
if(ZEK_SANITIZE)
    target_compile_options(zek_options INTERFACE -fsanitize=${ZEK_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
    target_compile_definitions(zek_options INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(zek_options INTERFACE -fsanitize=${ZEK_SANITIZE})
elseif(NOT ZEK_IS_SANITIZED)
    zek_add_known_compile_options(
        zek_options -fstack-protector-strong -fcf-protection -fstack-clash-protection)
    # The library's checks of buffer sizes work only in optimised code.
    set(FORTIFY -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    zek_check_links(ZEK_CAN_FORTIFY -O2 -D_FORTIFY_SOURCE=2)
    if(ZEK_CAN_FORTIFY)
        target_compile_options(zek_options INTERFACE "$<$<NOT:$<CONFIG:Debug>>:${FORTIFY}>")
    endif()
endif()

# Linked statically, the program starts in half the time, and starting is most of what it does for
# a small model. The static libraries may be missing, or not be complete. Where there is no such
# program, as on macOS, the compiler may warn of the option and leave it out.
set(CMAKE_REQUIRED_FLAGS -fPIE)
set(CMAKE_REQUIRED_LINK_OPTIONS -static-pie)
check_cxx_source_compiles(
    "#include <string>
    int main(int count, char** words) { return std::string(words[0]).append(count, 'a') == \"\"; }"
    ZEK_CAN_LINK_STATICALLY FAIL_REGEX "argument unused")
unset(CMAKE_REQUIRED_FLAGS)
unset(CMAKE_REQUIRED_LINK_OPTIONS)
option(ZEK_STATIC "Link ZEKTexComp with static libraries alone" ${ZEK_CAN_LINK_STATICALLY})
# The sanitizers replace functions of the C library, which takes a dynamic one.
if(ZEK_IS_SANITIZED)
    set(ZEK_STATIC OFF)
endif()

# How the program is linked. Constants share no mapping with code: nobody can run them.
add_library(zek_program_options INTERFACE)
target_link_libraries(zek_program_options INTERFACE zek_options)
zek_add_known_link_options(
    zek_program_options LINKER:--gc-sections LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack
    LINKER:-z,separate-code)
if(ZEK_STATIC)
    target_link_options(zek_program_options INTERFACE -static-pie)
else()
    zek_add_known_link_options(zek_program_options -pie)
endif()
