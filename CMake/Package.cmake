# What `cpack` makes of the installed components: a Debian package each, and an archive with the
# programs.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/CMake/PackageArchive.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/CMake/PackageDebian.cmake)
set(CPACK_PACKAGE_CONTACT "ZEKTexComp maintainers <maintainers@zektexcomp.invalid>"
    CACHE STRING "Whom the packages name as their maintainer")
set(CPACK_PACKAGE_FILE_NAME
    ${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_COMPONENTS_ALL program dev)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME zektexcomp)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION graphics)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION
    "ZEKTexComp looks for PVRTC, ETC, ASTC and DXT variants beside a model and\nsets the flags of its textures, lightmaps and reflection cubemaps to match.\nzek does that for whole trees of models, says what is wrong with them, and\nshows what is in them.")
# Linked statically, the program depends on no other package.
if(NOT ZEK_STATIC)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
endif()

set(CPACK_DEBIAN_DEV_PACKAGE_NAME zektexcomp-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS zektexcomp)
set(CPACK_COMPONENT_DEV_DESCRIPTION
    "The static libraries that ZEKTexComp is built on, their headers, and what\nCMake and pkg-config need to find them.")

set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_ARCHIVE_PROGRAM_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})

include(CPack)
