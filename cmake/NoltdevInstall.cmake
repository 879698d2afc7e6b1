# Install rules, the exported CMake package noltDevSDK_special and the pkg-config files.
# A device build (no host SDK) installs the module, its public header and the platform
# interface headers; a PC build adds the host SDK's libraries and its control API.
# Every rule names its component, one per Debian package (cmake/NoltdevPackage.cmake):
#   module    the module's shared library          host      the host SDK's libraries
#   dev       headers, CMake package, .pc, static   host-dev  noltdev_host.h, its .pc
#   sim       special-sim (tools/special-sim)
include(CMakePackageConfigHelpers)

set(NOLTDEV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/noltDevSDK_special)
set(NOLTDEV_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
# The build header differs between architectures; the packages of several of them install
# side by side, so there it goes to the architecture's include directory.
set(NOLTDEV_INSTALL_BUILD_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR})
if(NOLTDEV_PACKAGE)
  set(NOLTDEV_INSTALL_BUILD_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/${CMAKE_LIBRARY_ARCHITECTURE})
endif()

set(NOLTDEV_EXPORTED_TARGETS noltDevSDK_special noltdev_platform_headers)
set(NOLTDEV_HOST_TARGETS noltdev_xml noltdev_kernel noltdev_report_status noltdev_shadow noltdev_host)
if(NOLTDEV_MODULE_STATIC)
  # a static module carries its cJSON link into the package
  list(APPEND NOLTDEV_EXPORTED_TARGETS noltdev_cjson)
endif()
set(NOLTDEV_ALIASED_TARGETS ${NOLTDEV_EXPORTED_TARGETS})
if(NOLTDEV_BUILD_HOST_SDK)
  list(APPEND NOLTDEV_ALIASED_TARGETS ${NOLTDEV_HOST_TARGETS})
endif()

# add_subdirectory users get the package's names too.
foreach(target IN LISTS NOLTDEV_ALIASED_TARGETS)
  if(NOT target STREQUAL "noltDevSDK_special")
    add_library(noltDevSDK_special::${target} ALIAS ${target})
  endif()
  # Installed libraries find their siblings (the module needs the host services) beside them.
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "SHARED_LIBRARY")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
endforeach()

target_include_directories(noltDevSDK_special PUBLIC $<INSTALL_INTERFACE:${NOLTDEV_INSTALL_BUILD_INCLUDEDIR}>)
install(TARGETS ${NOLTDEV_EXPORTED_TARGETS} EXPORT noltDevSDK_specialTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT module NAMELINK_COMPONENT dev
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET noltDevSDK_special_static)
  install(TARGETS noltDevSDK_special_static ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
endif()

install(FILES ${NOLTDEV_PUBLIC_HEADER} ${PROJECT_SOURCE_DIR}/userpace/inc/noltDevSDK_special_protocol.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(FILES ${NOLTDEV_GENERATED_INCLUDE}/noltDevSDK_special_build.h
  DESTINATION ${NOLTDEV_INSTALL_BUILD_INCLUDEDIR} COMPONENT dev)
# Built against the SDK's own headers (NOLTDEV_SDK_HEADERS), the device has those: only
# the project's JSON wrapper is installed beside the module.
file(GLOB NOLTDEV_PLATFORM_HEADERS ${PROJECT_SOURCE_DIR}/userpace/src/comm/json/*.h)
if(NOT NOLTDEV_SDK_HEADERS)
  file(GLOB NOLTDEV_SDK_HEADER_COPIES
    ${PROJECT_SOURCE_DIR}/microkernel/inc/*.h
    ${PROJECT_SOURCE_DIR}/subcore/*.h
    ${PROJECT_SOURCE_DIR}/subcore/shadow/*.h
    ${PROJECT_SOURCE_DIR}/userpace/src/comm/xml/*.h
    ${PROJECT_SOURCE_DIR}/userpace/src/comm/log/*.h)
  list(APPEND NOLTDEV_PLATFORM_HEADERS ${NOLTDEV_SDK_HEADER_COPIES})
endif()
install(FILES ${NOLTDEV_PLATFORM_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/noltdev COMPONENT dev)

# The host SDK's targets are a file of their own, which the package's config reads when
# it is there: a device build has none, and its Debian package is a separate one.
install(EXPORT noltDevSDK_specialTargets NAMESPACE noltDevSDK_special:: DESTINATION ${NOLTDEV_CMAKE_DIR}
  COMPONENT dev)
if(NOLTDEV_BUILD_HOST_SDK)
  install(TARGETS ${NOLTDEV_HOST_TARGETS} EXPORT noltDevSDK_specialHostTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT host NAMELINK_COMPONENT host-dev
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/hostsdk/include/noltdev_host.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/noltdev
    COMPONENT host-dev)
  install(EXPORT noltDevSDK_specialHostTargets NAMESPACE noltDevSDK_special:: DESTINATION ${NOLTDEV_CMAKE_DIR}
    COMPONENT host-dev)
endif()
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/noltDevSDK_specialConfig.cmake.in
  ${PROJECT_BINARY_DIR}/noltDevSDK_specialConfig.cmake INSTALL_DESTINATION ${NOLTDEV_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/noltDevSDK_specialConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/noltDevSDK_specialConfig.cmake
  ${PROJECT_BINARY_DIR}/noltDevSDK_specialConfigVersion.cmake DESTINATION ${NOLTDEV_CMAKE_DIR} COMPONENT dev)

# The .pc files locate the prefix from their own place, so a staged tree works as is.
file(RELATIVE_PATH NOLTDEV_PC_TO_PREFIX /${NOLTDEV_PKGCONFIG_DIR} /)
string(REGEX REPLACE "/$" "" NOLTDEV_PC_TO_PREFIX "${NOLTDEV_PC_TO_PREFIX}")
set(NOLTDEV_PC_BUILD_CFLAGS "")
if(NOT NOLTDEV_INSTALL_BUILD_INCLUDEDIR STREQUAL CMAKE_INSTALL_INCLUDEDIR)
  set(NOLTDEV_PC_BUILD_CFLAGS " -I\${prefix}/${NOLTDEV_INSTALL_BUILD_INCLUDEDIR}")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/noltDevSDK_special.pc.in ${PROJECT_BINARY_DIR}/noltDevSDK_special.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/noltDevSDK_special.pc DESTINATION ${NOLTDEV_PKGCONFIG_DIR} COMPONENT dev)
if(NOLTDEV_BUILD_HOST_SDK)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/noltdev_host.pc.in ${PROJECT_BINARY_DIR}/noltdev_host.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/noltdev_host.pc DESTINATION ${NOLTDEV_PKGCONFIG_DIR} COMPONENT host-dev)
endif()
