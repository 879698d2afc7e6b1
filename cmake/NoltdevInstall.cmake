# Install rules, the exported CMake package noltDevSDK_special and the pkg-config files.
# A device build (no host SDK) installs the module, its public header and the platform
# interface headers; a PC build adds the host SDK's libraries and its control API.
include(CMakePackageConfigHelpers)

set(NOLTDEV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/noltDevSDK_special)
set(NOLTDEV_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(NOLTDEV_EXPORTED_TARGETS noltDevSDK_special noltdev_platform_headers)
if(NOLTDEV_BUILD_HOST_SDK)
  list(APPEND NOLTDEV_EXPORTED_TARGETS noltdev_xml noltdev_kernel noltdev_report_status noltdev_shadow noltdev_host)
  set(NOLTDEV_HAS_HOST_SDK TRUE)
else()
  set(NOLTDEV_HAS_HOST_SDK FALSE)
endif()
if(NOLTDEV_MODULE_STATIC)
  # a static module carries its cJSON link into the package
  list(APPEND NOLTDEV_EXPORTED_TARGETS noltdev_cjson)
endif()

# add_subdirectory users get the package's names too.
foreach(target IN LISTS NOLTDEV_EXPORTED_TARGETS)
  if(NOT target STREQUAL "noltDevSDK_special")
    add_library(noltDevSDK_special::${target} ALIAS ${target})
  endif()
endforeach()

# Installed libraries find their siblings (the module needs the host services) beside them.
foreach(target IN LISTS NOLTDEV_EXPORTED_TARGETS)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "SHARED_LIBRARY")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
endforeach()

install(TARGETS ${NOLTDEV_EXPORTED_TARGETS} EXPORT noltDevSDK_specialTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(FILES ${NOLTDEV_PUBLIC_HEADER} ${PROJECT_SOURCE_DIR}/userpace/inc/noltDevSDK_special_protocol.h
  ${NOLTDEV_GENERATED_INCLUDE}/noltDevSDK_special_build.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
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
install(FILES ${NOLTDEV_PLATFORM_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/noltdev)
if(NOLTDEV_BUILD_HOST_SDK)
  install(FILES ${PROJECT_SOURCE_DIR}/hostsdk/include/noltdev_host.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/noltdev)
endif()

install(EXPORT noltDevSDK_specialTargets NAMESPACE noltDevSDK_special:: DESTINATION ${NOLTDEV_CMAKE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/noltDevSDK_specialConfig.cmake.in
  ${PROJECT_BINARY_DIR}/noltDevSDK_specialConfig.cmake INSTALL_DESTINATION ${NOLTDEV_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/noltDevSDK_specialConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/noltDevSDK_specialConfig.cmake
  ${PROJECT_BINARY_DIR}/noltDevSDK_specialConfigVersion.cmake DESTINATION ${NOLTDEV_CMAKE_DIR})

# The .pc files locate the prefix from their own place, so a staged tree works as is.
file(RELATIVE_PATH NOLTDEV_PC_TO_PREFIX /${NOLTDEV_PKGCONFIG_DIR} /)
string(REGEX REPLACE "/$" "" NOLTDEV_PC_TO_PREFIX "${NOLTDEV_PC_TO_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/noltDevSDK_special.pc.in ${PROJECT_BINARY_DIR}/noltDevSDK_special.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/noltDevSDK_special.pc DESTINATION ${NOLTDEV_PKGCONFIG_DIR})
if(NOLTDEV_BUILD_HOST_SDK)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/noltdev_host.pc.in ${PROJECT_BINARY_DIR}/noltdev_host.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/noltdev_host.pc DESTINATION ${NOLTDEV_PKGCONFIG_DIR})
endif()
