# Installs the SDK into a scratch folder, builds the consumer program against it with
# find_package(KxUi), copies the DLLs beside it and runs it under Wine.
set(prefix ${BUILD_DIR}/sdk-test/install)
set(consumer_build ${BUILD_DIR}/sdk-test/build)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/sdk -B ${consumer_build} -G Ninja
    -DCMAKE_TOOLCHAIN_FILE=${SOURCE_DIR}/cmake/toolchain-mingw64.cmake
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${consumer_build})
file(GLOB dlls ${prefix}/bin/*.dll)
file(COPY ${dlls} DESTINATION ${consumer_build})
run(env KXUI_WINEPREFIX=${WINEPREFIX} ${WINE_RUN} ${consumer_build}/KxUiSdkConsumer.exe)
message("${last_output}")
if(NOT last_output MATCHES "KxUi SDK consumer: ok")
  message(FATAL_ERROR "the consumer did not report success")
endif()
