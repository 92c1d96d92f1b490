# Installs the build tree into a scratch prefix, then configures, builds and runs a consumer
# project against it. The consumer's source is the sample of README.md, so the README stays true.
file(REMOVE_RECURSE ${WORK_DIR})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix
                RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "install failed")
endif()

file(READ ${SOURCE_DIR}/README.md readme)
string(REGEX MATCH "<!-- sample begin -->\n```cpp\n(.*)```\n<!-- sample end -->" sample "${readme}")
if(NOT CMAKE_MATCH_1)
  message(FATAL_ERROR "README.md has no sample between the sample markers")
endif()
file(MAKE_DIRECTORY ${WORK_DIR}/source)
file(WRITE ${WORK_DIR}/source/main.cpp "${CMAKE_MATCH_1}")
file(COPY ${SOURCE_DIR}/tests/package/consumer/CMakeLists.txt DESTINATION ${WORK_DIR}/source)

execute_process(COMMAND ${CMAKE_COMMAND} -S ${WORK_DIR}/source -B ${WORK_DIR}/build
                  -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_CXX_COMPILER=${CXX}
                RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "configure of the consumer failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "build of the consumer failed")
endif()
execute_process(COMMAND ${WORK_DIR}/build/consumer RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "the consumer failed")
endif()
