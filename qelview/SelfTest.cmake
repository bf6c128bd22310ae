# Runs qelview's self-test under Xvfb with GTK's Cairo renderer for each
# language, then checks every file's panel against qelinfo's grid and that
# every snapshot has more than a handful of colours.
#   cmake -DXVFB_RUN=... -DQELVIEW=... -DQELINFO=... -DOUT=... -DSAMPLES=a;b -DLANGUAGES=en;ja -P SelfTest.cmake
set(min_colours 64)

# Lines with their runs of blanks made one and the ends trimmed; the file
# name qelinfo prints first, and any trailing blank lines, dropped.
function(normalised text out)
  string(REGEX REPLACE "[ \t]+" " " text "${text}")
  string(REGEX REPLACE " ?\n ?" "\n" text "${text}")
  string(STRIP "${text}" text)
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${OUT})
set(failures "")
foreach(language ${LANGUAGES})
  set(dir ${OUT}/${language})
  execute_process(COMMAND ${CMAKE_COMMAND} -E env GSK_RENDERER=cairo NO_AT_BRIDGE=1
      ${XVFB_RUN} -a -s "-screen 0 1400x1000x24" ${QELVIEW} --self-test ${dir} --lang ${language} ${SAMPLES}
    RESULT_VARIABLE result OUTPUT_VARIABLE report ERROR_VARIABLE errors)
  message(STATUS "${language}:\n${report}${errors}")
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "qelview --self-test failed (${result}) for ${language}")
  endif()
  foreach(sample ${SAMPLES})
    get_filename_component(name ${sample} NAME)
    execute_process(COMMAND ${QELINFO} --lang ${language} ${sample} OUTPUT_VARIABLE expected)
    string(FIND "${expected}" "\n" end_of_name)
    math(EXPR after_name "${end_of_name} + 1")
    string(SUBSTRING "${expected}" ${after_name} -1 expected)
    file(READ ${dir}/${name}.txt shown)
    normalised("${expected}" expected)
    normalised("${shown}" shown)
    if(NOT shown STREQUAL expected)
      string(APPEND failures "${language} ${name}: the panel shows\n${shown}\nqelinfo shows\n${expected}\n")
    endif()
    string(REGEX MATCH "${name}\\.png: ([0-9]+) colours" found "${report}")
    if(NOT found OR CMAKE_MATCH_1 LESS min_colours)
      string(APPEND failures "${language} ${name}: the snapshot is blank\n")
    endif()
  endforeach()
endforeach()
if(failures)
  message(FATAL_ERROR "${failures}")
endif()
