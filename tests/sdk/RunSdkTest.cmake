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
# Configured with the toolchain file installed with the SDK, in both configurations a user builds;
# the program's own post-build step copies the DLLs beside it.
foreach(config Release Debug)
  set(dir ${consumer_build}-${config})
  file(REMOVE_RECURSE ${dir})
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/sdk -B ${dir} -G Ninja
      -DCMAKE_TOOLCHAIN_FILE=${prefix}/lib/cmake/KxUi/toolchain-mingw64.cmake
      -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${config})
  run(${CMAKE_COMMAND} --build ${dir})
  run(env KXUI_WINEPREFIX=${WINEPREFIX} ${WINE_RUN} ${dir}/KxUiSdkConsumer.exe)
  message("${config}:\n${last_output}")
  if(NOT last_output MATCHES "KxUi SDK consumer: ok")
    message(FATAL_ERROR "the ${config} consumer did not report success")
  endif()
endforeach()
