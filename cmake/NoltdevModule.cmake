# The module. Its sources build once, as an object library that the tests, benchmarks
# and fuzzers link to reach its internals; the library users link (shared by default,
# static with NOLTDEV_MODULE_STATIC) is made from those objects and exports the seven
# public functions and nothing else: hidden visibility by default, the header's
# NOLTDEVSDK_SPECIAL_API on the seven, and a version script made from the header.
set(NOLTDEV_PUBLIC_HEADER ${PROJECT_SOURCE_DIR}/userpace/inc/noltDevSDK_special_def.h)
set(NOLTDEV_GENERATED_INCLUDE ${PROJECT_BINARY_DIR}/include)

# The layout the module is built with, for the public header's guard.
include(CheckTypeSize)
set(CMAKE_EXTRA_INCLUDE_FILES time.h)
check_type_size(time_t NOLTDEV_SIZEOF_TIME_T LANGUAGE C)
unset(CMAKE_EXTRA_INCLUDE_FILES)
if(NOT NOLTDEV_SIZEOF_TIME_T)
  message(FATAL_ERROR "cannot tell the size of time_t for this target")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/noltDevSDK_special_build.h.in
  ${NOLTDEV_GENERATED_INCLUDE}/noltDevSDK_special_build.h @ONLY)

# The exported names are those the public header marks; the version script lists them.
file(READ ${NOLTDEV_PUBLIC_HEADER} NOLTDEV_HEADER_TEXT)
string(REGEX MATCHALL "NOLTDEVSDK_SPECIAL_API[ \t\r\n]+int[ \t\r\n]+noltDevSDK_special_[A-Za-z0-9_]+"
  NOLTDEV_API_DECLS "${NOLTDEV_HEADER_TEXT}")
set(NOLTDEV_API_NAMES "")
foreach(decl IN LISTS NOLTDEV_API_DECLS)
  string(REGEX MATCH "noltDevSDK_special_[A-Za-z0-9_]+" name "${decl}")
  list(APPEND NOLTDEV_API_NAMES ${name})
endforeach()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${NOLTDEV_PUBLIC_HEADER})
list(JOIN NOLTDEV_API_NAMES ";\n    " NOLTDEV_API_SCRIPT_LINES)
set(NOLTDEV_VERSION_SCRIPT ${PROJECT_BINARY_DIR}/noltDevSDK_special.map)
file(CONFIGURE OUTPUT ${NOLTDEV_VERSION_SCRIPT} CONTENT
  "/* generated from noltDevSDK_special_def.h: the module exports these and nothing else */\n{\n  global:\n    ${NOLTDEV_API_SCRIPT_LINES};\n  local:\n    *;\n};\n")

file(GLOB_RECURSE NOLTDEV_MODULE_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/userpace/src/domain/special/*.cpp)
add_library(noltDevSDK_special_objects OBJECT ${NOLTDEV_MODULE_SOURCES})
set_target_properties(noltDevSDK_special_objects PROPERTIES
  CXX_STANDARD 11 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF
  CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
target_compile_options(noltDevSDK_special_objects PRIVATE -fno-exceptions -fno-rtti -ffunction-sections)
target_include_directories(noltDevSDK_special_objects
  PUBLIC ${PROJECT_SOURCE_DIR}/userpace/inc ${NOLTDEV_GENERATED_INCLUDE}
  PRIVATE ${PROJECT_SOURCE_DIR}/userpace/src/domain/special ${PROJECT_SOURCE_DIR}/userpace/src/include)
target_link_libraries(noltDevSDK_special_objects PUBLIC noltdev_platform_headers noltdev_cjson Threads::Threads)
if(NOLTDEV_COVERAGE)
  # the storms count from many threads at once: counters updated atomically stay exact
  target_compile_options(noltDevSDK_special_objects PRIVATE --coverage -O0 -fprofile-update=atomic)
  target_link_options(noltDevSDK_special_objects INTERFACE --coverage)
endif()
if(NOLTDEV_STACK_USAGE)
  target_compile_options(noltDevSDK_special_objects PRIVATE -fstack-usage)
endif()

# The static library: one relocatable object whose hidden symbols are made local, so that
# in the application's link too only the seven public names are visible.
function(noltdev_add_static_module name)
  set(prelinked ${PROJECT_BINARY_DIR}/noltDevSDK_special_prelinked.o)
  add_custom_command(OUTPUT ${prelinked}
    COMMAND ${CMAKE_LINKER} -r -o ${prelinked} $<TARGET_OBJECTS:noltDevSDK_special_objects>
    COMMAND ${CMAKE_OBJCOPY} --localize-hidden ${prelinked}
    DEPENDS $<TARGET_OBJECTS:noltDevSDK_special_objects> COMMAND_EXPAND_LISTS VERBATIM)
  set_source_files_properties(${prelinked} PROPERTIES EXTERNAL_OBJECT TRUE GENERATED TRUE)
  add_library(${name} STATIC ${prelinked})
  add_dependencies(${name} noltDevSDK_special_objects)
  set_target_properties(${name} PROPERTIES OUTPUT_NAME noltDevSDK_special LINKER_LANGUAGE CXX)
endfunction()

if(NOLTDEV_MODULE_STATIC)
  noltdev_add_static_module(noltDevSDK_special)
else()
  add_library(noltDevSDK_special SHARED $<TARGET_OBJECTS:noltDevSDK_special_objects>)
  set_target_properties(noltDevSDK_special PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LINK_DEPENDS ${NOLTDEV_VERSION_SCRIPT})
  # a function nothing in the library calls (the module's symbols are hidden) is dropped
  target_link_options(noltDevSDK_special PRIVATE
    LINKER:--version-script=${NOLTDEV_VERSION_SCRIPT} LINKER:--exclude-libs,ALL LINKER:--gc-sections)
  if(NOLTDEV_PACKAGE)
    # the development package carries the static library beside the shared one
    noltdev_add_static_module(noltDevSDK_special_static)
  endif()
endif()
add_library(noltDevSDK_special::noltDevSDK_special ALIAS noltDevSDK_special)
set_target_properties(noltDevSDK_special PROPERTIES LINKER_LANGUAGE CXX)
target_include_directories(noltDevSDK_special PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/userpace/inc> $<BUILD_INTERFACE:${NOLTDEV_GENERATED_INCLUDE}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(noltDevSDK_special PRIVATE noltdev_cjson Threads::Threads)
if(NOLTDEV_BUILD_HOST_SDK)
  # On a PC the platform functions come from the host SDK; on a device the application
  # links the vendor SDK instead (configure with -DNOLTDEV_BUILD_HOST_SDK=OFF).
  target_link_libraries(noltDevSDK_special PRIVATE noltdev_xml noltdev_kernel noltdev_report_status noltdev_shadow)
  if(NOT NOLTDEV_SANITIZE AND NOT NOLTDEV_MODULE_STATIC)
    target_link_options(noltDevSDK_special PRIVATE LINKER:--no-undefined)
  endif()
endif()
if(NOLTDEV_COVERAGE)
  target_link_options(noltDevSDK_special PRIVATE --coverage)
endif()
