# Read by cpack before each kind of package: the archive holds the program alone, in a folder of its
# own.
if(CPACK_GENERATOR STREQUAL TGZ)
    set(CPACK_COMPONENTS_ALL program)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
