# Runs lupdate over the library's sources for every translation catalogue.
#
#   cmake -DVEL_MODE=update -DVEL_LUPDATE=<lupdate> -DVEL_SOURCE_DIR=<tree>
#         -DVEL_TS_FILES=<a.ts|b.ts> -P lupdate_catalogues.cmake
#     refreshes the catalogues in place (the update_translations target);
#   cmake -DVEL_MODE=check ... -DVEL_WORK_DIR=<scratch dir> -P lupdate_catalogues.cmake
#     fails when lupdate would change a catalogue (a text was added, changed
#     or removed in the sources without refreshing it), when lupdate reports
#     a problem with the sources, or when a catalogue holds a message that is
#     not translated (unfinished, vanished or obsolete).
#
# Catalogues are written without source locations and without obsolete
# messages, so that a catalogue changes only when a text does, not when the
# code around a text moves.

foreach(var VEL_MODE VEL_LUPDATE VEL_SOURCE_DIR VEL_TS_FILES)
    if(NOT DEFINED ${var} OR "${${var}}" STREQUAL "")
        message(FATAL_ERROR "lupdate_catalogues: ${var} is not set")
    endif()
endforeach()
string(REPLACE "|" ";" ts_files "${VEL_TS_FILES}")

# The public headers are read too: they declare the classes whose tr() the
# sources call, and lupdate needs them to name the contexts.
set(lupdate_args
    -silent -no-obsolete -locations none -extensions cpp,h
    -I ${VEL_SOURCE_DIR}/include
    -I ${VEL_SOURCE_DIR}/src/vel_system/include
    ${VEL_SOURCE_DIR}/src/vel_qt_widgets
    ${VEL_SOURCE_DIR}/include/vel_qt_widgets)

# Prints the messages of a catalogue that are not finished translations;
# returns their number in out_count.
function(vel_untranslated ts out_count)
    file(READ ${ts} content)
    # In a message the source comes before its translation's opening tag,
    # which carries the type of an unfinished one.
    set(count 0)
    string(REGEX MATCHALL "<source>[^<]*</source>|<translation[^>]*>" tokens "${content}")
    set(source "")
    foreach(token IN LISTS tokens)
        if(token MATCHES "^<source>(.*)</source>$")
            set(source "${CMAKE_MATCH_1}")
        elseif(token MATCHES "^<translation" AND token MATCHES "type=\"(unfinished|vanished|obsolete)\"")
            math(EXPR count "${count} + 1")
            message("${ts}: \"${source}\" is ${CMAKE_MATCH_1}")
        endif()
    endforeach()
    set(${out_count} ${count} PARENT_SCOPE)
endfunction()

if(VEL_MODE STREQUAL "update")
    execute_process(COMMAND ${VEL_LUPDATE} ${lupdate_args} -ts ${ts_files}
        RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "lupdate failed (${result})")
    endif()
    foreach(ts IN LISTS ts_files)
        vel_untranslated(${ts} count)
        if(count GREATER 0)
            message(WARNING "${ts}: ${count} message(s) still need a translation")
        endif()
    endforeach()
elseif(VEL_MODE STREQUAL "check")
    if(NOT DEFINED VEL_WORK_DIR)
        message(FATAL_ERROR "lupdate_catalogues: VEL_WORK_DIR is not set")
    endif()
    file(REMOVE_RECURSE ${VEL_WORK_DIR})
    file(MAKE_DIRECTORY ${VEL_WORK_DIR})
    set(failed FALSE)
    foreach(ts IN LISTS ts_files)
        get_filename_component(name ${ts} NAME)
        set(copy ${VEL_WORK_DIR}/${name})
        configure_file(${ts} ${copy} COPYONLY)
        execute_process(COMMAND ${VEL_LUPDATE} ${lupdate_args} -ts ${copy}
            RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
        if(NOT result EQUAL 0)
            message("${name}: lupdate failed (${result}):\n${output}")
            set(failed TRUE)
        elseif(NOT output STREQUAL "")
            message("${name}: lupdate reports problems with the sources:\n${output}")
            set(failed TRUE)
        endif()
        execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${ts} ${copy}
            RESULT_VARIABLE different)
        if(different)
            execute_process(COMMAND diff -u ${ts} ${copy} OUTPUT_VARIABLE diff ERROR_QUIET)
            message("${name} is stale: lupdate would change it as follows "
                "(refresh it with the update_translations target):\n${diff}")
            set(failed TRUE)
        endif()
        vel_untranslated(${ts} count)
        if(count GREATER 0)
            message("${name}: ${count} message(s) without a finished translation")
            set(failed TRUE)
        endif()
    endforeach()
    if(failed)
        message(FATAL_ERROR "translation catalogues are not complete and current")
    endif()
    message(STATUS "translation catalogues are complete and current")
else()
    message(FATAL_ERROR "lupdate_catalogues: VEL_MODE must be update or check")
endif()
