# cmake -DBUILD=... -DSTAGE=... -P stage.cmake: installs the build twice, whole and static only.
function(install_into prefix)
  execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${prefix}" ${ARGN}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE "${STAGE}")
install_into("${STAGE}/full")
install_into("${STAGE}/static" --component development)
install_into("${STAGE}/static" --component static)
