# SPDX-License-Identifier: MIT
# run(<command...>): runs a command, fails the test with its output if it fails.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGV}\n${out}\n${err}")
  endif()
  message(STATUS "${out}")
endfunction()
