# Installs the built library into a scratch prefix, then configures, builds and runs a host that
# finds it with find_package(Tavi) alone.
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${TAVI_BUILD_DIR} --prefix ${WORK_DIR}/prefix
  RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "install failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S ${HOST_SOURCE_DIR} -B ${WORK_DIR}/build
  -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "the host could not find the installed package")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "the host did not build against the installed headers")
endif()
execute_process(COMMAND ${WORK_DIR}/build/tavi-example-host RESULT_VARIABLE rc OUTPUT_VARIABLE out)
message("${out}")
if(rc)
  message(FATAL_ERROR "the host failed: ${rc}")
endif()
