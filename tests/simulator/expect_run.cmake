# SPDX-License-Identifier: MIT
# Runs a program and compares its exit code and text with what a test expects of them.
#   COMMAND   program and arguments
#   CODE      the exit code
#   PATTERN   regular expression that standard output and standard error together must match
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE errors
                TIMEOUT 60)
string(APPEND text "${errors}")
if(NOT "${code}" STREQUAL "${CODE}")
  message(FATAL_ERROR "exit code ${code} instead of ${CODE}; output:\n${text}")
endif()
if(NOT text MATCHES "${PATTERN}")
  message(FATAL_ERROR "output does not match ${PATTERN}:\n${text}")
endif()
