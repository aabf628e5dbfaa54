# What `cmake --install` puts where. Component "program" is the programs with their manual pages and
# documents, component "dev" is what a program needs that is built on the libraries.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

get_property(LIBRARIES GLOBAL PROPERTY ZEK_LIBRARIES)
get_property(HEADERS GLOBAL PROPERTY ZEK_HEADERS)

set(HEADER_FOLDER ${CMAKE_INSTALL_INCLUDEDIR}/ZEKTexComp)
set(PACKAGE_FOLDER ${CMAKE_INSTALL_LIBDIR}/cmake/ZEKTexComp)

install(TARGETS ZEKTexComp COMPONENT program)
install(FILES ${PROJECT_SOURCE_DIR}/Documents/ZEKTexComp.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
        COMPONENT program)

if(ZEK_BUILD_TOOL)
    install(TARGETS zek COMPONENT program)
    install(FILES ${PROJECT_SOURCE_DIR}/Documents/zek.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
            COMPONENT program)
    install(FILES ${PROJECT_SOURCE_DIR}/Source/ZekTool/zek.bash
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zek
            COMPONENT program)
endif()

# The documents, laid out as in the source tree, so that the links between them hold.
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
              ${PROJECT_SOURCE_DIR}/SECURITY.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT program)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/Documents DESTINATION ${CMAKE_INSTALL_DOCDIR}
        COMPONENT program
        FILES_MATCHING PATTERN "*.md" PATTERN "*.ksy" PATTERN "*.json" PATTERN "*.svg")
foreach(EXAMPLE IN ITEMS consumer-add-subdirectory consumer-find-package consumer-pkg-config pipeline)
    install(
        DIRECTORY ${PROJECT_SOURCE_DIR}/Examples/${EXAMPLE}
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/Examples
        COMPONENT program
        PATTERN build EXCLUDE
        PATTERN ListMeshes EXCLUDE
        REGEX "([.]sh|/pre-commit)$"
        PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                    WORLD_EXECUTE)
endforeach()

install(
    TARGETS ${LIBRARIES}
    EXPORT ZEKTexCompTargets
    ARCHIVE COMPONENT dev
    INCLUDES DESTINATION ${HEADER_FOLDER})
foreach(HEADER IN LISTS HEADERS)
    cmake_path(GET HEADER PARENT_PATH FOLDER)
    cmake_path(RELATIVE_PATH FOLDER BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/Source)
    install(FILES ${HEADER} DESTINATION ${HEADER_FOLDER}/${FOLDER} COMPONENT dev)
endforeach()

# For find_package(ZEKTexComp), where each library is a component.
list(TRANSFORM LIBRARIES REPLACE "^zek_" "" OUTPUT_VARIABLE COMPONENTS)
install(
    EXPORT ZEKTexCompTargets
    NAMESPACE ZEKTexComp::
    DESTINATION ${PACKAGE_FOLDER}
    COMPONENT dev)
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/CMake/ZEKTexCompConfig.cmake.in ${PROJECT_BINARY_DIR}/ZEKTexCompConfig.cmake
    INSTALL_DESTINATION ${PACKAGE_FOLDER})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/ZEKTexCompConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(
    FILES ${PROJECT_BINARY_DIR}/ZEKTexCompConfig.cmake
          ${PROJECT_BINARY_DIR}/ZEKTexCompConfigVersion.cmake
          ${PROJECT_SOURCE_DIR}/CMake/ZEKTexCompMarkModels.cmake
    DESTINATION ${PACKAGE_FOLDER}
    COMPONENT dev)

# For pkg-config. It finds the prefix from its own place, which packaging and --prefix change after
# this file has been written; a linker wants each library before those that it builds on.
set(PKG_CONFIG_FOLDER ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
string(REGEX REPLACE "[^/]+" ".." PREFIX_FROM_PKG_CONFIG ${PKG_CONFIG_FOLDER})
set(PKG_CONFIG_LIBRARIES "")
set(PKG_CONFIG_OPTIONS "")
foreach(LIBRARY IN LISTS LIBRARIES)
    get_target_property(OPTIONS ${LIBRARY} INTERFACE_COMPILE_OPTIONS)
    if(OPTIONS)
        list(APPEND PKG_CONFIG_OPTIONS ${OPTIONS})
    endif()
    get_target_property(FILE_NAME ${LIBRARY} OUTPUT_NAME)
    list(PREPEND PKG_CONFIG_LIBRARIES -l${FILE_NAME})
endforeach()
list(JOIN PKG_CONFIG_OPTIONS " " PKG_CONFIG_OPTIONS)
list(JOIN PKG_CONFIG_LIBRARIES " " PKG_CONFIG_LIBRARIES)
configure_file(${PROJECT_SOURCE_DIR}/CMake/zektexcomp.pc.in ${PROJECT_BINARY_DIR}/zektexcomp.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zektexcomp.pc DESTINATION ${PKG_CONFIG_FOLDER} COMPONENT dev)
