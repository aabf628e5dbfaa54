# Run by cpack on the files that it is about to pack. Those of a Debian package are brought to where
# Debian has them: documents in a folder of the package's name, with a changelog, all that it wants
# compressed.
if(NOT CPACK_GENERATOR STREQUAL DEB)
    return()
endif()

string(TIMESTAMP DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)

# Compresses a file in its place, without its name and time.
function(zek_compress FILE)
    execute_process(COMMAND gzip --best --no-name --force ${FILE} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(zek_add_changelog SHARED_FILES PACKAGE)
    set(CHANGELOG ${SHARED_FILES}/doc/${PACKAGE}/changelog)
    file(WRITE ${CHANGELOG}
        "${CPACK_DEBIAN_PROGRAM_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
        "  * What is new stands in CHANGELOG.md, with the documents of the programs.\n\n"
        " -- ${CPACK_PACKAGE_CONTACT}  ${DATE}\n")
    zek_compress(${CHANGELOG})
endfunction()

set(STAGE ${CPACK_TEMPORARY_DIRECTORY})
set(PROGRAM_FILES ${STAGE}/program${CPACK_PACKAGING_INSTALL_PREFIX}/share)
set(DEV_FILES ${STAGE}/dev${CPACK_PACKAGING_INSTALL_PREFIX}/share)
set(PROGRAM ${CPACK_DEBIAN_PROGRAM_PACKAGE_NAME})

file(RENAME ${PROGRAM_FILES}/doc/${CPACK_PACKAGE_NAME} ${PROGRAM_FILES}/doc/${PROGRAM})
zek_add_changelog(${PROGRAM_FILES} ${PROGRAM})
zek_add_changelog(${DEV_FILES} ${CPACK_DEBIAN_DEV_PACKAGE_NAME})
file(GLOB PAGES ${PROGRAM_FILES}/man/man1/*.1)
foreach(PAGE IN LISTS PAGES)
    zek_compress(${PAGE})
endforeach()
file(WRITE ${PROGRAM_FILES}/lintian/overrides/${PROGRAM}
    "# Linked statically and loaded anywhere, a program looks like a library.\n"
    "${PROGRAM}: shared-library-lacks-prerequisites [usr/bin/*]\n")
