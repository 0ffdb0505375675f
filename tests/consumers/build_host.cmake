# cmake -D MODE=installed|subdirectory -D SOURCE=… -D BUILD=… -D WORK=… -D COMPILER=… -D TYPE=… -D TYPE_FLAGS=… -D FLAGS=… -P build_host.cmake
# Builds and runs the hosts from nothing.
file(REMOVE_RECURSE ${WORK})
string(TOUPPER "${TYPE}" type)
set(configuration
    -S ${SOURCE}/tests/consumers/host -B ${WORK}/build -G Ninja
    -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_CXX_FLAGS=${FLAGS} -D CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} -D CMAKE_BUILD_TYPE=${TYPE}
    -D CMAKE_CXX_FLAGS_${type}=${TYPE_FLAGS})
if(MODE STREQUAL "installed")
    execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND configuration -D CMAKE_PREFIX_PATH=${WORK}/prefix)
else()
    list(APPEND configuration -D ZENVOR_SOURCE_DIR=${SOURCE}
        -D ZENVOR_HTTP=qt -D ZENVOR_WITH_SENSORS=OFF -D ZENVOR_WITH_MULTIMEDIA=OFF # the least there is
        -D ZENVOR_PRECOMPILE_HEADERS=all)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} ${configuration} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND nice ${CMAKE_COMMAND} --build ${WORK}/build COMMAND_ERROR_IS_FATAL ANY)
foreach(host host qml_host widgets_host)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${WORK}/build/${host}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
