# SPDX-License-Identifier: MIT
# Configures, builds and runs the host project of this folder, which pulls
# QelImgInfo in with add_subdirectory.
include(${CMAKE_CURRENT_LIST_DIR}/../install/Run.cmake)
file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/subproject -B ${WORK_DIR}
    -DQEL_SOURCE_DIR=${SOURCE_DIR} -DCMAKE_BUILD_TYPE=${BUILD_TYPE}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
run(${CMAKE_COMMAND} --build ${WORK_DIR} -j2)
run(${WORK_DIR}/bin/parent_host)
