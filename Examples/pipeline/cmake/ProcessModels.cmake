# Processing models in a build with CMake:
#
#     zek_process_models(TARGET FOLDER)
#
# adds the target TARGET, which processes every model below FOLDER, and sets TARGET_STAMPS to the
# stamps of these. A model that is added later is found by the next build.
#
# Times do not show everything that process-model.sh sees, so it is called for each model. It touches
# the stamp when there was something to do, and what depends on the stamp is made again only then.
find_program(ZEKTEXCOMP ZEKTexComp REQUIRED)
set(ZEK_PROCESS_MODEL ${CMAKE_CURRENT_LIST_DIR}/../process-model.sh)

function(zek_process_models TARGET FOLDER)
    # A file that never comes to be, so that what depends on it is always out of date.
    set(ALWAYS_LOOK ${CMAKE_CURRENT_BINARY_DIR}/${TARGET}-always-look)
    add_custom_command(OUTPUT ${ALWAYS_LOOK} COMMAND true)
    set_source_files_properties(${ALWAYS_LOOK} PROPERTIES SYMBOLIC ON)

    file(GLOB_RECURSE MODELS CONFIGURE_DEPENDS ${FOLDER}/*.zek)
    set(STAMPS "")
    foreach(MODEL IN LISTS MODELS)
        add_custom_command(
            OUTPUT ${MODEL}.stamp
            COMMAND env ZEKTEXCOMP=${ZEKTEXCOMP} ${ZEK_PROCESS_MODEL} ${MODEL}
            DEPENDS ${MODEL} ${ALWAYS_LOOK}
            COMMENT "Looking at ${MODEL}"
            VERBATIM)
        list(APPEND STAMPS ${MODEL}.stamp)
    endforeach()
    add_custom_target(${TARGET} DEPENDS ${STAMPS})
    set(${TARGET}_STAMPS ${STAMPS} PARENT_SCOPE)
endfunction()
