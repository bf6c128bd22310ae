# SPDX-License-Identifier: MIT
# Builds the Debian packages for /usr, unpacks them into a scratch root,
# builds the sample host against the -dev contents and runs it and qelinfo
# from there; lintian, when present, must report no error.
include(${CMAKE_CURRENT_LIST_DIR}/../install/Run.cmake)
file(REMOVE_RECURSE ${WORK_DIR})
set(build ${WORK_DIR}/build)
set(root ${WORK_DIR}/root)

run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${build} -DCMAKE_INSTALL_PREFIX=/usr
    -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DQEL_BUILD_TESTS=OFF -DQEL_BUILD_EXAMPLES=OFF
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
run(${CMAKE_COMMAND} --build ${build} -j2)
run(${CMAKE_COMMAND} -E chdir ${build} cpack -G DEB)
file(GLOB packages ${build}/*.deb)
list(LENGTH packages count)
if(NOT count EQUAL 3)
  message(FATAL_ERROR "expected three packages, got: ${packages}")
endif()
foreach(package ${packages})
  run(dpkg -x ${package} ${root})
endforeach()

file(GLOB pc_dir ${root}/usr/lib/*/pkgconfig ${root}/usr/lib/pkgconfig)
get_filename_component(lib_dir ${pc_dir} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${pc_dir})
execute_process(COMMAND pkg-config --cflags --libs QelImgInfo
  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "pkg-config does not know the packaged QelImgInfo")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${CXX} -std=c++17 ${SOURCE_DIR}/examples/sample_host.cpp ${flags} -o ${WORK_DIR}/sample_host)

# Texts from the packaged tables, not the keys they fall back to.
set(ENV{LD_LIBRARY_PATH} ${lib_dir})
set(ENV{LANGUAGE} en)
foreach(check "${WORK_DIR}/sample_host|White Balance Cloudy"
              "${root}/usr/bin/qelinfo;${SOURCE_DIR}/samples/talvo-q77.json|Focal Length")
  string(REPLACE "|" ";" check "${check}")
  list(POP_BACK check expected)
  execute_process(COMMAND ${check} OUTPUT_VARIABLE out RESULT_VARIABLE result)
  if(NOT result EQUAL 0 OR NOT out MATCHES "${expected}")
    message(FATAL_ERROR "${check} printed, with status ${result}:\n${out}")
  endif()
endforeach()

find_program(LINTIAN lintian)
if(LINTIAN)
  run(${LINTIAN} --fail-on error ${packages})
endif()
