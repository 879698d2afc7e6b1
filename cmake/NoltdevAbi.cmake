# The binary-interface check: abidiff compares the module's exported functions, and every
# public record, with the description kept in abi/<target>/ (scripts/abi.sh). The module
# passes most records through void pointers, so their layouts are not reachable from its
# seven functions; a probe library whose one function takes a pointer to each public type
# of the header carries them into a description of their own. Runs on gcc builds without
# instrumentation, where the baseline was made.
find_program(NOLTDEV_ABIDIFF abidiff)
set(abi_target ${CMAKE_LIBRARY_ARCHITECTURE})
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND NOLTDEV_SIZEOF_TIME_T EQUAL 8)
  set(abi_target ${abi_target}-time64)
endif()
# the baseline's name, also read by scripts/abi.sh from the cache
set(NOLTDEV_ABI_TARGET "${abi_target}" CACHE INTERNAL "target name of the ABI baseline")
set(NOLTDEV_ABI_DIR ${PROJECT_SOURCE_DIR}/abi/${NOLTDEV_ABI_TARGET})

if(NOLTDEV_ABIDIFF AND CMAKE_C_COMPILER_ID STREQUAL "GNU" AND NOT NOLTDEV_SANITIZE AND NOT NOLTDEV_COVERAGE
   AND NOT NOLTDEV_MODULE_STATIC AND NOLTDEV_ABI_TARGET)
  string(REGEX MATCHALL "\n}[ \t]*[A-Za-z_][A-Za-z0-9_]*" type_ends "${NOLTDEV_HEADER_TEXT}")
  set(params "")
  foreach(end IN LISTS type_ends)
    string(REGEX MATCH "[A-Za-z_][A-Za-z0-9_]*" type "${end}")
    list(APPEND params "${type} *${type}_")
  endforeach()
  list(JOIN params ",\n    " params)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/abi_probe/public_types.c CONTENT
    "/* generated: every public type of noltDevSDK_special_def.h in one exported signature */\n#include \"noltDevSDK_special_def.h\"\n\n__attribute__((visibility(\"default\"))) void noltdev_abi_public_types(\n    ${params});\nvoid noltdev_abi_public_types(\n    ${params}) {\n}\n")
  add_library(noltdev_abi_probe SHARED ${PROJECT_BINARY_DIR}/abi_probe/public_types.c)
  target_compile_options(noltdev_abi_probe PRIVATE -Wno-unused-parameter -g)
  target_include_directories(noltdev_abi_probe PRIVATE ${PROJECT_SOURCE_DIR}/userpace/inc ${NOLTDEV_GENERATED_INCLUDE})
  set_target_properties(noltdev_abi_probe PROPERTIES C_VISIBILITY_PRESET hidden)
  if(EXISTS ${NOLTDEV_ABI_DIR})
    add_test(NAME ABI.MatchesTheBaseline
             COMMAND bash ${PROJECT_SOURCE_DIR}/scripts/abi.sh check ${PROJECT_BINARY_DIR})
  endif()
endif()
