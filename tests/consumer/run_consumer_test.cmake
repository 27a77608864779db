# Installs the build tree into a fresh prefix, then configures, builds and
# runs the consumer project against it.
file(REMOVE_RECURSE ${VEL_WORK_DIR})
set(prefix ${VEL_WORK_DIR}/prefix)

function(run_step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed (${result}): ${ARGN}")
    endif()
endfunction()

set(config_args)
if(VEL_CONFIG)
    set(config_args --config ${VEL_CONFIG})
endif()

run_step(${CMAKE_COMMAND} --install ${VEL_BUILD_DIR} --prefix ${prefix} ${config_args})
run_step(${CMAKE_COMMAND} -S ${VEL_CONSUMER_SOURCE} -B ${VEL_WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_BUILD_TYPE=${VEL_CONFIG}
    -DVEL_SANITIZE=${VEL_SANITIZE}
    -DVEL_FORM=${VEL_FORM})
run_step(${CMAKE_COMMAND} --build ${VEL_WORK_DIR}/build ${config_args})
run_step(${VEL_WORK_DIR}/build/vel_consumer)
