# Installs the package into a folder of its own, builds a copy of an application against it with
# find_package(Quillet), and runs that application.
# Needs: BUILD, WORK, SOURCE, TOOLCHAIN, RUNNER, PROGRAM and, if it takes any, ARGUMENTS.

function(must)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE code)
    if(NOT code EQUAL 0)
        list(JOIN ARGV " " command)
        message(FATAL_ERROR "failed with ${code}: ${command}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCE}/ DESTINATION ${WORK}/source)
must(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix)
must(${CMAKE_COMMAND} -S ${WORK}/source -B ${WORK}/build -G Ninja
    -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DCMAKE_PREFIX_PATH=${WORK}/prefix
    -DCMAKE_BUILD_TYPE=Release)
must(${CMAKE_COMMAND} --build ${WORK}/build)
must(${RUNNER} ${WORK}/build/${PROGRAM} ${ARGUMENTS})
