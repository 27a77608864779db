# Installs the build tree the ways users and packagers do, then builds and
# runs programs against each install as an outside project would:
#   1. a plain install into a fresh prefix: the consumer programs and every
#      standalone example, built against it and run where it was put;
#   2. a staged install (DESTDIR): every file lands below the staging folder;
#   3. the first prefix copied elsewhere and the original removed: the
#      consumer programs again, built against and run from the copy.
#   4. with VEL_OTHER_BUILD_DIR (the build for the other Qt major): both
#      builds into one prefix, no file in common, and the consumer programs
#      built against this build's package there.
# Programs always run with LD_LIBRARY_PATH unset, so the installed libraries
# and the Designer plug-in must find their own dependencies.
#
# Inputs: VEL_BUILD_DIR, VEL_WORK_DIR, VEL_CONSUMER_SOURCE, VEL_EXAMPLES_DIR,
# VEL_FORM, VEL_CONFIG, VEL_SANITIZE, VEL_QT_MAJOR, VEL_OTHER_BUILD_DIR.
cmake_minimum_required(VERSION 3.16)
file(REMOVE_RECURSE ${VEL_WORK_DIR})

if(NOT VEL_QT_MAJOR)
    set(VEL_QT_MAJOR 5)
endif()
if(VEL_QT_MAJOR EQUAL 5)
    set(suffix "")
else()
    set(suffix "-qt${VEL_QT_MAJOR}")
endif()
set(plugin_subdir lib/qt${VEL_QT_MAJOR}/plugins)

function(run_step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed (${result}): ${ARGN}")
    endif()
endfunction()

# Runs a program built against an install, as a user starts it.
function(run_program)
    run_step(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH --unset=QT_PLUGIN_PATH ${ARGN})
endfunction()

set(config_args)
if(VEL_CONFIG)
    set(config_args --config ${VEL_CONFIG})
endif()
# The install of a sanitizer build needs its users built the same way.
set(sanitize_args)
if(VEL_SANITIZE)
    set(sanitize_args
        "-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined"
        "-DCMAKE_EXE_LINKER_FLAGS=-fsanitize=address,undefined")
endif()

find_program(READELF readelf)
if(NOT READELF)
    message(FATAL_ERROR "readelf is needed to check the consumer programs' dependencies")
endif()

# The widget programs must not depend on libvel_system themselves, or they
# would load it through their own run path and hide a library that cannot
# find it.
function(check_widgets_only program)
    execute_process(COMMAND ${READELF} -d ${program} OUTPUT_VARIABLE dynamic RESULT_VARIABLE result)
    if(NOT result EQUAL 0 OR NOT dynamic MATCHES "libvel_qt_widgets${suffix}\\.so")
        message(FATAL_ERROR "${program} does not depend on libvel_qt_widgets:\n${dynamic}")
    endif()
    if(dynamic MATCHES "libvel_system${suffix}\\.so")
        message(FATAL_ERROR "${program} depends on libvel_system directly, so it cannot tell "
                            "whether libvel_qt_widgets finds it:\n${dynamic}")
    endif()
    if(dynamic MATCHES "\\(RPATH\\)")
        message(FATAL_ERROR "${program} carries an RPATH, which would also serve "
                            "libvel_qt_widgets' dependencies:\n${dynamic}")
    endif()
endfunction()

function(build_and_run_consumer install_prefix build_dir)
    run_step(${CMAKE_COMMAND} -S ${VEL_CONSUMER_SOURCE} -B ${build_dir}
        -DCMAKE_PREFIX_PATH=${install_prefix}
        -DCMAKE_BUILD_TYPE=${VEL_CONFIG}
        -DVEL_SANITIZE=${VEL_SANITIZE}
        -DVEL_QT_MAJOR=${VEL_QT_MAJOR}
        -DVEL_FORM=${VEL_FORM})
    run_step(${CMAKE_COMMAND} --build ${build_dir} ${config_args} -j2)
    check_widgets_only(${build_dir}/vel_consumer_widgets)
    check_widgets_only(${build_dir}/vel_consumer_form)
    run_program(${build_dir}/vel_consumer_widgets)
    run_program(${build_dir}/vel_consumer_form)
    run_program(${build_dir}/vel_consumer_translation)
    # Only the prefix's plug-in folder, as Designer is pointed at it.
    run_step(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH
        QT_PLUGIN_PATH=${install_prefix}/${plugin_subdir}
        ${build_dir}/vel_consumer_plugin)
endfunction()

# 1. A plain install, used where it was put.
set(prefix ${VEL_WORK_DIR}/prefix)
run_step(${CMAKE_COMMAND} --install ${VEL_BUILD_DIR} --prefix ${prefix} ${config_args})
build_and_run_consumer(${prefix} ${VEL_WORK_DIR}/build)

# Every example that builds on its own against the installed package, as
# its README comment says, starts and quits.
file(GLOB example_dirs LIST_DIRECTORIES true ${VEL_EXAMPLES_DIR}/*)
set(examples)
foreach(dir ${example_dirs})
    if(EXISTS ${dir}/CMakeLists.txt)
        file(READ ${dir}/CMakeLists.txt text)
        if(text MATCHES "find_package\\(vel_qt_widgets")
            get_filename_component(name ${dir} NAME)
            list(APPEND examples ${name})
        endif()
    endif()
endforeach()
foreach(required slider_ticks log_range_slider grid_csv flow_buttons filter_table)
    if(NOT required IN_LIST examples)
        message(FATAL_ERROR "example ${required} does not build on its own (found: ${examples})")
    endif()
endforeach()
foreach(example ${examples})
    set(example_build ${VEL_WORK_DIR}/examples/${example})
    run_step(${CMAKE_COMMAND} -S ${VEL_EXAMPLES_DIR}/${example} -B ${example_build}
        -DCMAKE_PREFIX_PATH=${prefix}
        -DCMAKE_BUILD_TYPE=${VEL_CONFIG}
        -DVEL_QT_MAJOR=${VEL_QT_MAJOR}
        ${sanitize_args})
    run_step(${CMAKE_COMMAND} --build ${example_build} ${config_args} -j2)
    run_program(${example_build}/${example} --quit)
endforeach()

# 2. A staged install writes below DESTDIR only, the plug-in link included.
set(staged_prefix ${VEL_WORK_DIR}/staged-prefix)
set(stage ${VEL_WORK_DIR}/stage)
run_step(${CMAKE_COMMAND} -E env DESTDIR=${stage}
    ${CMAKE_COMMAND} --install ${VEL_BUILD_DIR} --prefix ${staged_prefix} ${config_args})
if(EXISTS ${staged_prefix})
    message(FATAL_ERROR "the staged install wrote into ${staged_prefix} itself, outside DESTDIR")
endif()
set(staged_plugin ${stage}${staged_prefix}/${plugin_subdir}/designer/libvel_qt_widgets${suffix}.so)
if(NOT EXISTS ${staged_plugin})
    message(FATAL_ERROR "the staged install has no Designer plug-in at ${staged_plugin}")
endif()

# 3. The tree copied elsewhere works there; the original is gone, so nothing
# can still resolve to it.
set(moved_prefix ${VEL_WORK_DIR}/elsewhere/vel)
file(MAKE_DIRECTORY ${VEL_WORK_DIR}/elsewhere)
run_step(cp -a ${prefix} ${moved_prefix})
file(REMOVE_RECURSE ${prefix} ${VEL_WORK_DIR}/build)
build_and_run_consumer(${moved_prefix} ${VEL_WORK_DIR}/build-moved)

# 4. Beside the other Qt major's build in one prefix: neither install writes
# a file the other wrote, and this build's package still works there.
if(VEL_OTHER_BUILD_DIR)
    if(NOT EXISTS ${VEL_OTHER_BUILD_DIR}/cmake_install.cmake)
        message(FATAL_ERROR "VEL_OTHER_BUILD_DIR ${VEL_OTHER_BUILD_DIR} is no configured build")
    endif()
    foreach(which own other)
        if(which STREQUAL "own")
            set(build_dir ${VEL_BUILD_DIR})
        else()
            set(build_dir ${VEL_OTHER_BUILD_DIR})
        endif()
        set(alone ${VEL_WORK_DIR}/alone-${which})
        run_step(${CMAKE_COMMAND} --install ${build_dir} --prefix ${alone} ${config_args})
        file(GLOB_RECURSE files_${which} LIST_DIRECTORIES false RELATIVE ${alone} ${alone}/*)
    endforeach()
    set(common "")
    foreach(file ${files_own})
        if(file IN_LIST files_other)
            list(APPEND common ${file})
        endif()
    endforeach()
    if(common)
        message(FATAL_ERROR "both Qt majors install these files:\n${common}")
    endif()
    set(shared_prefix ${VEL_WORK_DIR}/shared-prefix)
    run_step(${CMAKE_COMMAND} --install ${VEL_OTHER_BUILD_DIR} --prefix ${shared_prefix} ${config_args})
    run_step(${CMAKE_COMMAND} --install ${VEL_BUILD_DIR} --prefix ${shared_prefix} ${config_args})
    build_and_run_consumer(${shared_prefix} ${VEL_WORK_DIR}/build-shared)
endif()
