# SPDX-License-Identifier: MIT
# Installs the built library into a scratch prefix, then builds and runs a
# host against it twice: through find_package and through pkg-config; runs
# it once more after the prefix has moved.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

include(${CMAKE_CURRENT_LIST_DIR}/Run.cmake)

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
file(GLOB tables ${prefix}/share/QelImgInfo/QelImgInfo.framework/Resources/*.lproj/Localizable.strings)
if(NOT tables OR NOT EXISTS ${prefix}/share/QelImgInfo/QelImgInfo.framework/Resources/Info.plist)
  message(FATAL_ERROR "the strings tables and Info.plist are not under share/QelImgInfo")
endif()
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/consumer -B ${WORK_DIR}/consumer
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer)
run(${WORK_DIR}/consumer/consumer)

find_program(PKG_CONFIG pkg-config REQUIRED)
file(GLOB pc_dirs ${prefix}/lib*/pkgconfig ${prefix}/lib/*/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "${pc_dirs}")
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs QelImgInfo
  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "pkg-config does not know QelImgInfo")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
run(c++ -std=c++17 ${SOURCE_DIR}/tests/install/consumer/main.cpp ${flags}
    -Wl,-rpath,${prefix}/lib -o ${WORK_DIR}/consumer-pc)
run(${WORK_DIR}/consumer-pc)

# The library finds its tables from its own folder, wherever the prefix lies.
file(RENAME ${prefix} ${WORK_DIR}/moved)
file(GLOB moved_lib_dirs ${WORK_DIR}/moved/lib*)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${moved_lib_dirs} ${WORK_DIR}/consumer-pc)
