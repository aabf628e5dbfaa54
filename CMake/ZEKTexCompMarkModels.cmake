# Marking models in a build:
#
#     zek_mark_models(TARGET target FOLDER models [OUTPUT folder])
#
# adds the target, which is part of `all` and marks every *.zek below the folder of models.
#
# With OUTPUT (and a Ninja generator), the models are left alone, the marked ones go to the same
# places below that folder, and target_FILES lists them for what is made of them. A model is marked
# when it has changed and when a variant beside it has come or gone. A model that has come itself is
# found by the next build.
#
# Without, the models are marked in place, by one run of zek in every build, which writes only those
# that differ.
cmake_policy(PUSH)
cmake_policy(VERSION 3.25)

# Tells whether a build can name a path. A list of CMake's ends a name at a semicolon, and not within
# brackets; a backslash becomes a slash; CMake forbids some characters in what a step makes, and leaves
# some to the shell, unquoted; and Ninja knows no | and few control characters.
function(_zek_is_nameable PATH RESULT)
    string(ASCII 1 FIRST_CONTROL)
    string(ASCII 31 LAST_CONTROL)
    if(PATH MATCHES "[][;\\#<>?{|}${FIRST_CONTROL}-${LAST_CONTROL}]")
        set(${RESULT} FALSE PARENT_SCOPE)
    else()
        set(${RESULT} TRUE PARENT_SCOPE)
    endif()
endfunction()

# Puts control characters for the brackets in a list, which would join its elements.
macro(_zek_hide_brackets LIST)
    string(ASCII 1 OPENING)
    string(ASCII 2 CLOSING)
    string(REPLACE "[" "${OPENING}" ${LIST} "${${LIST}}")
    string(REPLACE "]" "${CLOSING}" ${LIST} "${${LIST}}")
endmacro()

# Parts the models below a folder, relative to it, into those that a build can name and the others,
# whose brackets are hidden.
function(_zek_find_models FOLDER NAMEABLE UNNAMEABLE)
    file(GLOB_RECURSE MODELS RELATIVE ${FOLDER} ${FOLDER}/*.zek)
    _zek_hide_brackets(MODELS)
    set(GOOD "")
    set(BAD "")
    foreach(MODEL IN LISTS MODELS)
        _zek_is_nameable("${MODEL}" IS_NAMEABLE)
        if(IS_NAMEABLE AND EXISTS "${FOLDER}/${MODEL}")
            list(APPEND GOOD "${MODEL}")
        else()
            list(APPEND BAD "${MODEL}")
        endif()
    endforeach()
    set(${NAMEABLE} "${GOOD}" PARENT_SCOPE)
    set(${UNNAMEABLE} "${BAD}" PARENT_SCOPE)
endfunction()

# Has the build configured again when a model has come or gone in one of the folders. Those of the
# variants are left out. CONFIGURE_DEPENDS would do the same, but takes parts of unfriendly names for
# CMake's language.
function(_zek_watch_folders FOLDER)
    file(GLOB_RECURSE FOLDERS LIST_DIRECTORIES true ${FOLDER}/*)
    _zek_hide_brackets(FOLDERS)
    list(FILTER FOLDERS EXCLUDE REGEX "/tex_[^/]*(/|$)")
    foreach(WATCHED IN LISTS FOLDER FOLDERS)
        _zek_is_nameable("${WATCHED}" IS_NAMEABLE)
        if(IS_NAMEABLE AND IS_DIRECTORY "${WATCHED}")
            set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${WATCHED}")
        endif()
    endforeach()
endfunction()

# Sets UNREADABLE to what find says of folders that cannot be read, which CMake takes for empty ones.
function(_zek_find_unreadable FOLDER)
    set(UNREADABLE "")
    if(CMAKE_HOST_UNIX)
        execute_process(
            COMMAND find -H ${FOLDER} -type d
            OUTPUT_QUIET ERROR_VARIABLE UNREADABLE)
    endif()
    set(UNREADABLE "${UNREADABLE}" PARENT_SCOPE)
endfunction()

# Adds a step that always fails and says which models are not marked. It has the build configured
# again, as nothing else tells that a folder can be read by now.
function(_zek_report_unmarked STEP MODELS UNREADABLE)
    string(ASCII 1 OPENING)
    string(ASCII 2 CLOSING)
    list(JOIN MODELS "\n  " NAMES)
    string(REPLACE "${OPENING}" "[" NAMES "${NAMES}")
    string(REPLACE "${CLOSING}" "]" NAMES "${NAMES}")
    file(WRITE ${STEP}.txt "zek_mark_models: a build cannot name or read these, or parts of them; "
                           "they are not marked:\n  ${NAMES}\n${UNREADABLE}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${STEP}.txt)
    add_custom_command(
        OUTPUT ${STEP}
        COMMAND ${CMAKE_COMMAND} -E cat ${STEP}.txt
        COMMAND ${CMAKE_COMMAND} -E touch ${STEP}.txt
        COMMAND ${CMAKE_COMMAND} -E false
        COMMENT "Models that a build cannot name or read"
        VERBATIM)
endfunction()

# Adds the step that marks a model, and sets RESULT to the file that it makes.
function(_zek_add_marking MODEL FOLDER OUTPUT WORK RESULT)
    set(FILE "${OUTPUT}/${MODEL}")
    cmake_path(GET FILE PARENT_PATH FILE_FOLDER)
    file(MAKE_DIRECTORY "${FILE_FOLDER}")
    set(MARK ZEKTexComp::zek mark -o "${FILE}")
    if("${FOLDER}/${FILE}" MATCHES "[$:\"&'*^`]")
        # A depfile cannot hold such a name, so every build marks the model.
        set(WHEN ${WORK}/always)
    else()
        string(SHA256 NAME "${MODEL}")
        list(APPEND MARK --depfile ${WORK}/${NAME}.d)
        set(WHEN DEPFILE ${WORK}/${NAME}.d)
    endif()
    add_custom_command(
        OUTPUT "${FILE}"
        COMMAND ${MARK} "${FOLDER}/${MODEL}"
        DEPENDS "${FOLDER}/${MODEL}" ${WHEN}
        COMMENT "Marking ${MODEL}"
        VERBATIM)
    set(${RESULT} "${FILE}" PARENT_SCOPE)
endfunction()

# Sets TARGET_FILES as well.
function(_zek_mark_models_into OUTPUT TARGET FOLDER)
    if(NOT CMAKE_GENERATOR MATCHES "Ninja")
        message(FATAL_ERROR "zek_mark_models: OUTPUT needs a Ninja generator")
    endif()
    set(WORK ${CMAKE_CURRENT_BINARY_DIR}/${TARGET}.zek)
    file(MAKE_DIRECTORY ${WORK})
    # Never comes to be, so that what depends on it is always out of date.
    add_custom_command(OUTPUT ${WORK}/always COMMAND ${CMAKE_COMMAND} -E true)
    set_source_files_properties(${WORK}/always PROPERTIES SYMBOLIC ON)

    _zek_watch_folders(${FOLDER})
    _zek_find_models(${FOLDER} MODELS UNNAMEABLE)
    _zek_find_unreadable(${FOLDER})
    if(NOT MODELS AND NOT UNNAMEABLE)
        message(FATAL_ERROR "zek_mark_models: no models below ${FOLDER}\n${UNREADABLE}")
    endif()
    set(FILES "")
    foreach(MODEL IN LISTS MODELS)
        _zek_add_marking("${MODEL}" ${FOLDER} ${OUTPUT} ${WORK} FILE)
        list(APPEND FILES "${FILE}")
    endforeach()
    set(${TARGET}_FILES "${FILES}" PARENT_SCOPE)
    if(UNNAMEABLE OR UNREADABLE)
        _zek_report_unmarked(${WORK}/unmarked "${UNNAMEABLE}" "${UNREADABLE}")
        list(APPEND FILES ${WORK}/unmarked)
    endif()
    add_custom_target(${TARGET} ALL DEPENDS ${FILES})
endfunction()

# Refuses a folder that a build cannot name, or with the sign for any characters.
function(_zek_require_nameable FOLDER)
    _zek_is_nameable("${FOLDER}" IS_NAMEABLE)
    if(NOT IS_NAMEABLE OR FOLDER MATCHES "[*]")
        message(FATAL_ERROR "zek_mark_models: a build cannot name the folder ${FOLDER}")
    endif()
endfunction()

function(zek_mark_models)
    cmake_parse_arguments(PARSE_ARGV 0 ARG "" "TARGET;FOLDER;OUTPUT" "")
    if(NOT ARG_TARGET OR NOT ARG_FOLDER OR ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "zek_mark_models(TARGET target FOLDER models [OUTPUT folder])")
    endif()
    if(NOT TARGET ZEKTexComp::zek)
        message(FATAL_ERROR "zek_mark_models: the program zek is not installed")
    endif()
    cmake_path(ABSOLUTE_PATH ARG_FOLDER NORMALIZE)
    _zek_require_nameable("${ARG_FOLDER}")
    if(NOT ARG_OUTPUT)
        add_custom_target(${ARG_TARGET} ALL COMMAND ZEKTexComp::zek mark "${ARG_FOLDER}" VERBATIM)
        return()
    endif()
    cmake_path(ABSOLUTE_PATH ARG_OUTPUT BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} NORMALIZE)
    _zek_require_nameable("${ARG_OUTPUT}")
    cmake_path(IS_PREFIX ARG_FOLDER "${ARG_OUTPUT}" IS_BELOW)
    if(IS_BELOW)
        message(FATAL_ERROR "zek_mark_models: OUTPUT must not stand below FOLDER")
    endif()
    _zek_mark_models_into(${ARG_OUTPUT} ${ARG_TARGET} ${ARG_FOLDER})
    set(${ARG_TARGET}_FILES "${${ARG_TARGET}_FILES}" PARENT_SCOPE)
endfunction()
cmake_policy(POP)
