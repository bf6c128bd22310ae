# SPDX-License-Identifier: MIT
# Fails unless every defined dynamic symbol of LIBRARY is on the allow-list:
# the interface's factory and type information, the prefixed CoreFoundation
# functions under version QELIMGINFO_1, and the version itself.
cmake_policy(SET CMP0057 NEW)
execute_process(COMMAND ${NM} -D --defined-only --format=just-symbols ${LIBRARY}
  OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${NM} failed on ${LIBRARY}")
endif()
string(REPLACE "\n" ";" symbols "${symbols}")
set(allowed "^((QelCF[A-Za-z]+|_ZN11IQelImgInfo[0-9A-Za-z_]+|_ZT[IS]11IQelImgInfo)@@QELIMGINFO_1|QELIMGINFO_1(@@QELIMGINFO_1)?)$")
set(stray)
foreach(symbol ${symbols})
  if(NOT symbol MATCHES "${allowed}")
    list(APPEND stray ${symbol})
  endif()
endforeach()
if(stray)
  string(REPLACE ";" "\n  " stray "${stray}")
  message(FATAL_ERROR "exported beyond the interface:\n  ${stray}")
endif()
foreach(needed QelCFRelease@@QELIMGINFO_1 QelCFStringGetCString@@QELIMGINFO_1
               _ZN11IQelImgInfo15CreateImageInfoEv@@QELIMGINFO_1)
  if(NOT needed IN_LIST symbols)
    message(FATAL_ERROR "not exported: ${needed}")
  endif()
endforeach()
