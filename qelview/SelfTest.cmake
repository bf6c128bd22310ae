# SPDX-License-Identifier: MIT
# Runs qelview's self-test under Xvfb with GTK's Cairo renderer, switching
# language from its menu, then checks every file's panel in every language
# against qelinfo's grid and that every snapshot has more than a handful of
# colours.
#   cmake -DXVFB_RUN=... -DQELVIEW=... -DQELINFO=... -DOUT=... -DSAMPLES_DIR=... -DLANGUAGES=en;ja
#         -P SelfTest.cmake
set(min_colours 256)

# Lines with their runs of blanks made one and the ends trimmed; the file
# name qelinfo prints first, and any trailing blank lines, dropped.
function(normalised text out)
  string(REGEX REPLACE "[ \t]+" " " text "${text}")
  string(REGEX REPLACE " ?\n ?" "\n" text "${text}")
  string(STRIP "${text}" text)
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${OUT})
# The samples folder as a user opens it, and a file that is no image: its
# panel holds only the sentence saying so, and qelinfo prints no grid.
file(GLOB samples ${SAMPLES_DIR}/*)
set(broken ${OUT}/input/broken.jpg)
file(WRITE ${broken} "not a picture")
set(failures "")
string(REPLACE ";" "," language_list "${LANGUAGES}")
execute_process(COMMAND ${CMAKE_COMMAND} -E env GSK_RENDERER=cairo NO_AT_BRIDGE=1
    ${XVFB_RUN} -a -s "-screen 0 1400x1000x24" ${QELVIEW} --self-test ${OUT} --lang ${language_list}
    ${SAMPLES_DIR} ${broken}
  RESULT_VARIABLE result OUTPUT_VARIABLE report ERROR_VARIABLE errors)
message(STATUS "${report}${errors}")
if(NOT result EQUAL 0)
  message(FATAL_ERROR "qelview --self-test failed (${result})")
endif()
foreach(language ${LANGUAGES})
  set(dir ${OUT}/${language})
  foreach(sample ${samples} ${broken})
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
    string(REGEX MATCH "${language}/${name}\\.png: ([0-9]+) colours" found "${report}")
    if(NOT found OR CMAKE_MATCH_1 LESS min_colours)
      string(APPEND failures "${language} ${name}: the snapshot is blank\n")
    endif()
  endforeach()
endforeach()
if(failures)
  message(FATAL_ERROR "${failures}")
endif()
