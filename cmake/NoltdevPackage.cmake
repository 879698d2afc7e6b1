# The Debian packages (NOLTDEV_PACKAGE=ON), made by CPack's DEB generator from the install
# components of this build (cmake/NoltdevInstall.cmake), for the architecture being built:
#   libnoltdevsdk-special2      module     the module's shared library
#   libnoltdevsdk-special-dev   dev        headers, CMake package, .pc, static library
#   noltdev-host-sdk            host       the host SDK's four libraries
#   noltdev-host-sdk-dev        host-dev   noltdev_host.h, the host SDK's targets and .pc
#   special-sim                 sim        the simulator, its qualification suite, man page
# Dependencies on other packages come from the binaries (dpkg-shlibdeps), those between
# these packages from the component table below. The four library packages are
# Multi-Arch: same, so a cross target's install beside the PC's. Configure with
# CMAKE_INSTALL_PREFIX=/usr (scripts/package.sh does), then run cpack in the build.
if(NOT NOLTDEV_BUILD_HOST_SDK OR NOT NOLTDEV_BUILD_TOOLS OR NOLTDEV_MODULE_STATIC)
  message(FATAL_ERROR "the packages need the shared module, the host SDK and the tools")
endif()
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "the packages install under /usr: configure with -DCMAKE_INSTALL_PREFIX=/usr")
endif()

# The Debian architecture of the target, from its GNU triplet.
execute_process(COMMAND dpkg-architecture -t${CMAKE_LIBRARY_ARCHITECTURE} -qDEB_HOST_ARCH
  OUTPUT_VARIABLE NOLTDEV_DEB_ARCH OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)

# The package version is the project's; a tree with notes under "Unreleased" in
# CHANGELOG.md is past it, and says so (2.0.0+unreleased sorts after 2.0.0).
set(changelog_md ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog_md})
file(STRINGS ${changelog_md} first_section REGEX "^## " LIMIT_COUNT 1)
set(NOLTDEV_DEB_VERSION ${PROJECT_VERSION})
if(first_section STREQUAL "## Unreleased")
  string(APPEND NOLTDEV_DEB_VERSION "+unreleased")
endif()

# One date for the changelog and the man page, the last change of CHANGELOG.md, so that
# every architecture's build writes the same files (Multi-Arch: same wants them equal).
execute_process(COMMAND git log -1 --format=%ct -- CHANGELOG.md WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  OUTPUT_VARIABLE source_epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT source_epoch MATCHES "^[0-9]+$")
  file(TIMESTAMP ${changelog_md} source_epoch "%s" UTC)
endif()
execute_process(COMMAND date -u -R -d @${source_epoch} OUTPUT_VARIABLE source_date
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND date -u +%Y -d @${source_epoch} OUTPUT_VARIABLE source_year
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

set(NOLTDEV_PACKAGE_MAINTAINER "noltDevSDK maintainers <sdk-maintainers@noltdev.example>" CACHE STRING
  "Maintainer field of the Debian packages")
set(NOLTDEV_PACKAGE_COPYRIGHT "${source_year} the libnoltDevSDK_special authors" CACHE STRING
  "Copyright line of the packages' copyright file")
set(NOLTDEV_PACKAGE_LICENSE "proprietary" CACHE STRING "License name in the copyright file")
set(NOLTDEV_PACKAGE_LICENSE_TEXT "All rights reserved; distributed under the terms agreed with its owner."
  CACHE STRING "License text in the copyright file (one paragraph)")

# component | package name | section | packages of this build it depends on | summary |
# description (lines of at most 79 characters, "\n" between them)
set(NOLTDEV_PACKAGES
  "module|libnoltdevsdk-special2|libs|noltdev-host-sdk|special domain module of the noltDev device SDK|The shared library of the special domain module of the device SDK for networked\ncameras, doorbells, chimes and base stations, built to run on the host SDK."
  "dev|libnoltdevsdk-special-dev|libdevel|libnoltdevsdk-special2|special domain module of the noltDev device SDK (development files)|The public, protocol and build headers, the platform interface headers, the\nCMake package noltDevSDK_special, the pkg-config file and the static library."
  "host|noltdev-host-sdk|libs||host SDK of the noltDev device SDK|The microkernel, report-status and shadow services and the XML class on which\nthe special domain module runs on a PC, one shared library each."
  "host-dev|noltdev-host-sdk-dev|libdevel|noltdev-host-sdk,libnoltdevsdk-special-dev|host SDK of the noltDev device SDK (development files)|The control API noltdev_host.h, the host SDK's CMake targets and its pkg-config\nfile noltdev_host."
  "sim|special-sim|devel|libnoltdevsdk-special2,noltdev-host-sdk|simulator and qualification suite of the special domain module|Drives the module with a scenario file and a demo device or an application\nlibrary, and qualifies an application against the module's contract.")
# read by the post-build script (debian/multiarch.cmake)
set(CPACK_NOLTDEV_MULTIARCH_SAME libnoltdevsdk-special2 libnoltdevsdk-special-dev noltdev-host-sdk noltdev-host-sdk-dev)

# Each package's copyright and changelog, the same files in every architecture's build.
set(debian_dir ${PROJECT_BINARY_DIR}/debian)
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/copyright.in ${debian_dir}/copyright @ONLY)
add_custom_command(OUTPUT ${debian_dir}/changelog.gz
  COMMAND sh -c "awk -v source=libnoltdevsdk-special -v unreleased='${NOLTDEV_DEB_VERSION}' -v maintainer='${NOLTDEV_PACKAGE_MAINTAINER}' -v date='${source_date}' -f '${CMAKE_CURRENT_LIST_DIR}/debian/changelog.awk' '${changelog_md}' | gzip -9n > '${debian_dir}/changelog.gz'"
  DEPENDS ${changelog_md} ${CMAKE_CURRENT_LIST_DIR}/debian/changelog.awk VERBATIM)

# special-sim's man page from its --help (help2man), through the emulator on a cross build.
find_program(NOLTDEV_HELP2MAN help2man REQUIRED)
list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " sim_emulator)
file(GENERATE OUTPUT ${debian_dir}/help2man/special-sim
  CONTENT "#!/bin/sh\nexec ${sim_emulator} $<TARGET_FILE:special-sim> \"$@\"\n"
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
add_custom_command(OUTPUT ${debian_dir}/special-sim.1.gz
  COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=${source_epoch}
          ${NOLTDEV_HELP2MAN} --no-info --section=1 --version-string=${PROJECT_VERSION}
          "--name=simulator and qualification suite of the special domain module"
          --output=${debian_dir}/special-sim.1 ${debian_dir}/help2man/special-sim
  COMMAND gzip -9nf ${debian_dir}/special-sim.1
  DEPENDS special-sim VERBATIM)
add_custom_target(noltdev_package_docs ALL DEPENDS ${debian_dir}/changelog.gz ${debian_dir}/special-sim.1.gz)
install(FILES ${debian_dir}/special-sim.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT sim)

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_NAME libnoltdevsdk-special)
set(CPACK_PACKAGE_VENDOR "noltDevSDK")
set(CPACK_PACKAGE_CONTACT "${NOLTDEV_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_VERSION ${NOLTDEV_DEB_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${NOLTDEV_DEB_ARCH})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SOURCE libnoltdevsdk-special)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# the libraries of this build are in packages of this build: their dependencies are the
# component table's, so dpkg-shlibdeps may find them without a package
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "")
foreach(target noltDevSDK_special ${NOLTDEV_HOST_TARGETS})
  get_target_property(dir ${target} BINARY_DIR)
  list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${dir})
endforeach()
list(REMOVE_DUPLICATES CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/multiarch.cmake)
# dpkg-shlibdeps looks the target's libraries up in that architecture's multiarch packages
set(CPACK_PROJECT_CONFIG_FILE ${debian_dir}/cpack_project.cmake)
file(WRITE ${CPACK_PROJECT_CONFIG_FILE} "set(ENV{DEB_HOST_ARCH} ${NOLTDEV_DEB_ARCH})\n")

set(CPACK_COMPONENTS_ALL "")
foreach(row IN LISTS NOLTDEV_PACKAGES)
  string(REPLACE "|" ";" row "${row}")
  list(GET row 0 component)
  list(GET row 1 package)
  list(GET row 2 section)
  list(GET row 3 requires)
  list(GET row 4 summary)
  list(GET row 5 text)
  string(TOUPPER "${component}" var)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${var}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${var}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${var}_DESCRIPTION "${summary}\n${text}")
  string(REPLACE "," ";" requires "${requires}")
  list(TRANSFORM requires APPEND " (= ${NOLTDEV_DEB_VERSION})")
  list(JOIN requires ", " requires)
  set(CPACK_DEBIAN_${var}_PACKAGE_DEPENDS "${requires}")
  install(FILES ${debian_dir}/copyright ${debian_dir}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
endforeach()
include(CPack)
