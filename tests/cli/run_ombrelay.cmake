# Runs the ombrelay binary as a process: PROGRAM with the ;-list ARGS must exit with EXIT and
# print what the regular expression EXPECT matches on standard output or standard error.
execute_process(COMMAND ${PROGRAM} ${ARGS}
                RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT status EQUAL EXIT)
  message(FATAL_ERROR "exit ${status}, expected ${EXIT}\n${out}\n${err}")
endif()
if(NOT "${out}${err}" MATCHES "${EXPECT}")
  message(FATAL_ERROR "no match for ${EXPECT}\n${out}\n${err}")
endif()
