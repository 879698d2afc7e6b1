# CPack post-build script: what the DEB generator cannot say in the control data. For each
# package named in CPACK_NOLTDEV_MULTIARCH_SAME:
# - "Multi-Arch: same", so that one architecture's library and development packages
#   install beside another's;
# - the libraries' cache is refreshed through dpkg's ldconfig trigger instead of the
#   postinst and postrm that CPack writes only to call ldconfig.
# Each such .deb is unpacked, changed and packed again with root as owner, as CPack did.
foreach(deb IN LISTS CPACK_PACKAGE_FILES)
  get_filename_component(name "${deb}" NAME)
  string(REGEX REPLACE "_.*" "" package "${name}")
  if(NOT package IN_LIST CPACK_NOLTDEV_MULTIARCH_SAME)
    continue()
  endif()
  set(tree "${CPACK_TOPLEVEL_DIRECTORY}/multiarch/${package}")
  file(REMOVE_RECURSE "${tree}")
  file(MAKE_DIRECTORY "${tree}")
  execute_process(COMMAND dpkg-deb -R "${deb}" "${tree}" COMMAND_ERROR_IS_FATAL ANY)
  file(READ "${tree}/DEBIAN/control" control)
  string(REGEX REPLACE "(^|\n)(Architecture: [^\n]*\n)" "\\1\\2Multi-Arch: same\n" control "${control}")
  file(WRITE "${tree}/DEBIAN/control" "${control}")
  if(EXISTS "${tree}/DEBIAN/postinst")
    file(STRINGS "${tree}/DEBIAN/postinst" commands REGEX "^[ \t]+[a-z]")
    string(STRIP "${commands}" commands)
    if(commands STREQUAL "ldconfig")
      file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")
      file(WRITE "${tree}/DEBIAN/triggers" "activate-noawait ldconfig\n")
    endif()
  endif()
  execute_process(COMMAND dpkg-deb --root-owner-group -Zxz -b "${tree}" "${deb}" OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${tree}")
endforeach()
