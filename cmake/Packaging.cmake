# SPDX-License-Identifier: MIT
# Debian packages (cpack -G DEB): the library with its resources, its
# development files, and qelinfo. Configure with -DCMAKE_INSTALL_PREFIX=/usr
# so the library lands in the system's library folder.
set(QEL_DEB_MAINTAINER "The QelImgInfo authors <authors@qelimginfo.org>")
set(QEL_DEB_RUNTIME libqelimginfo${PROJECT_VERSION_MAJOR})
set(QEL_DEB_DEVELOPMENT libqelimginfo-dev)
set(QEL_DEB_QELINFO qelinfo)

# Each package carries the licence as its copyright file and a changelog, in
# the compressed form Debian expects.
set(QEL_DEB_DOCS_DIR ${PROJECT_BINARY_DIR}/deb-docs)
set(QEL_DEB_DOC_OUTPUTS)
set(CPACK_COMPONENTS_ALL Runtime Development)
if(TARGET qelinfo)
  list(APPEND CPACK_COMPONENTS_ALL qelinfo)
endif()
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  set(package ${QEL_DEB_${upper}})
  set(QEL_DEB_PACKAGE ${package})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/changelog.in ${QEL_DEB_DOCS_DIR}/${package}/changelog @ONLY)
  set(gz ${QEL_DEB_DOCS_DIR}/${package}/changelog.gz)
  add_custom_command(OUTPUT ${gz}
    COMMAND gzip -9n -c ${QEL_DEB_DOCS_DIR}/${package}/changelog > ${gz}
    DEPENDS ${QEL_DEB_DOCS_DIR}/${package}/changelog)
  list(APPEND QEL_DEB_DOC_OUTPUTS ${gz})
  install(FILES ${gz} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}
    RENAME copyright COMPONENT ${component})
endforeach()
add_custom_target(QelPackageDocs ALL DEPENDS ${QEL_DEB_DOC_OUTPUTS})

set(CPACK_PACKAGE_NAME qelimginfo)
set(CPACK_PACKAGE_VENDOR "The QelImgInfo authors")
set(CPACK_PACKAGE_CONTACT ${QEL_DEB_MAINTAINER})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${QEL_DEB_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://qelimginfo.org")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${QEL_OUTPUT_DIR})
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
set(CPACK_COMPONENT_QELINFO_DEPENDS Runtime)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${QEL_DEB_RUNTIME})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# The loader's cache is refreshed through dpkg's ldconfig trigger.
file(WRITE ${PROJECT_BINARY_DIR}/deb-control/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/deb-control/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "localized shooting information of image files
QelImgInfo turns the Exif, maker, scanner and GPS tags of one image file
into localized titles and values laid out in a display grid per kind of
device, for photo managers to show. This package holds the shared library
and its strings tables.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${QEL_DEB_DEVELOPMENT})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "localized shooting information of image files (development files)
QelImgInfo turns the Exif, maker, scanner and GPS tags of one image file
into localized titles and values laid out in a display grid per kind of
device. This package holds the headers, the CMake package and the
pkg-config file.")

set(CPACK_DEBIAN_QELINFO_PACKAGE_NAME ${QEL_DEB_QELINFO})
set(CPACK_DEBIAN_QELINFO_PACKAGE_SECTION graphics)
set(CPACK_COMPONENT_QELINFO_DESCRIPTION "show the shooting information of images and tag files
qelinfo prints the display grid a photo manager shows for an image (JPEG,
TIFF, RAW, PNG, WebP, HEIF) or a tag file, localized, as text or JSON.")

include(CPack)
