# SPDX-License-Identifier: MIT
# Install: the library with its resources (component Runtime); headers, CMake
# package and pkg-config file (Development).
install(TARGETS QelImgInfo EXPORT QelImgInfoTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
install(DIRECTORY ${QEL_FRAMEWORK_DIR} DESTINATION ${QEL_INSTALL_BUNDLES_DIR} COMPONENT Runtime)
install(FILES ${QEL_PUBLIC_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/QelImgInfo
  COMPONENT Development)

set(QEL_CMAKE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/QelImgInfo)
install(EXPORT QelImgInfoTargets NAMESPACE QelImgInfo::
  DESTINATION ${QEL_CMAKE_PACKAGE_DIR} COMPONENT Development)
include(CMakePackageConfigHelpers)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/QelImgInfoConfig.cmake.in
  ${PROJECT_BINARY_DIR}/QelImgInfoConfig.cmake INSTALL_DESTINATION ${QEL_CMAKE_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QelImgInfoConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QelImgInfoConfig.cmake
  ${PROJECT_BINARY_DIR}/QelImgInfoConfigVersion.cmake
  DESTINATION ${QEL_CMAKE_PACKAGE_DIR} COMPONENT Development)

# The pkg-config file finds its prefix from where it lies, so it stays right
# under any install prefix.
file(RELATIVE_PATH QEL_PC_TO_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(${PROJECT_SOURCE_DIR}/cmake/QelImgInfo.pc.in ${PROJECT_BINARY_DIR}/QelImgInfo.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/QelImgInfo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT Development)
