# The platform interface headers the module compiles against: the project's copies, or,
# with -DNOLTDEV_SDK_HEADERS=DIR (a device build, host SDK off), the SDK's own headers
# found anywhere under DIR. Those are probed at configure time: every type, member,
# constant, function and method the module uses (cmake/sdk_probe/uses.txt) must compile
# against them as the module uses it, and whatever does not is named.
# Sets NOLTDEV_PLATFORM_INCLUDE_DIRS.

# The SDK headers the module includes by name; the JSON wrapper (bscJSON.h) is the
# project's own and always comes from userpace/src/comm/json.
set(NOLTDEV_SDK_HEADER_NAMES noltdev_sdk_kernel_struct.h noltDevSDK_Common_Module_Def.h
  noltDevSDK_report_status.h noltDevSDK_shadow.h markupstl.h log_ctrl.h)

if(NOT NOLTDEV_SDK_HEADERS)
  set(NOLTDEV_PLATFORM_INCLUDE_DIRS
    ${PROJECT_SOURCE_DIR}/microkernel/inc ${PROJECT_SOURCE_DIR}/subcore ${PROJECT_SOURCE_DIR}/subcore/shadow
    ${PROJECT_SOURCE_DIR}/userpace/src/comm/xml ${PROJECT_SOURCE_DIR}/userpace/src/comm/log)
  return()
endif()

if(NOLTDEV_BUILD_HOST_SDK)
  message(FATAL_ERROR "NOLTDEV_SDK_HEADERS is for a device build: configure with -DNOLTDEV_BUILD_HOST_SDK=OFF "
    "(the host SDK implements the project's copies of the headers)")
endif()
get_filename_component(sdk_dir "${NOLTDEV_SDK_HEADERS}" ABSOLUTE)
if(NOT IS_DIRECTORY "${sdk_dir}")
  message(FATAL_ERROR "NOLTDEV_SDK_HEADERS: ${sdk_dir} is not a directory")
endif()

# Each header's directory, wherever the SDK keeps it.
set(NOLTDEV_PLATFORM_INCLUDE_DIRS "")
set(missing_headers "")
foreach(name IN LISTS NOLTDEV_SDK_HEADER_NAMES)
  file(GLOB_RECURSE found LIST_DIRECTORIES false "${sdk_dir}/*/${name}" "${sdk_dir}/${name}")
  list(LENGTH found count)
  if(count EQUAL 0)
    list(APPEND missing_headers ${name})
    continue()
  endif()
  list(GET found 0 first)
  get_filename_component(dir "${first}" DIRECTORY)
  list(APPEND NOLTDEV_PLATFORM_INCLUDE_DIRS "${dir}")
endforeach()
list(REMOVE_DUPLICATES NOLTDEV_PLATFORM_INCLUDE_DIRS)
if(missing_headers)
  list(JOIN missing_headers ", " text)
  message(FATAL_ERROR "NOLTDEV_SDK_HEADERS: no ${text} under ${sdk_dir}")
endif()

# probe_source(OUT CODE): a translation unit with the SDK headers and CODE in a function
# that is compiled, never called.
function(noltdev_probe_source out code)
  set(text "#include <ctime>\n#include <string>\n")
  foreach(name IN LISTS NOLTDEV_SDK_HEADER_NAMES)
    string(APPEND text "#include \"${name}\"\n")
  endforeach()
  string(REPLACE "@SEMI@" ";" code "${code}")
  string(APPEND text "void noltdev_sdk_probe(CMarkupSTL &x) {\n    (void)x;\n${code}}\n")
  file(WRITE "${out}" "${text}")
endfunction()

# Each use as NAME and CODE (two lists of the same length).
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/sdk_probe/uses.txt use_lines REGEX "^[a-z]")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/sdk_probe/uses.txt)
set(use_names "")
set(use_codes "")
foreach(line IN LISTS use_lines)
  if(line MATCHES "^type ([A-Za-z0-9_]+)$")
    set(name "${CMAKE_MATCH_1}")
    set(code "(void)sizeof(${CMAKE_MATCH_1});")
  elseif(line MATCHES "^member ([A-Za-z0-9_]+) ([A-Za-z0-9_]+)$")
    set(name "${CMAKE_MATCH_1}::${CMAKE_MATCH_2}")
    set(code "(void)sizeof(static_cast<${CMAKE_MATCH_1} *>(0)->${CMAKE_MATCH_2});")
  elseif(line MATCHES "^value ([A-Za-z0-9_]+)$")
    set(name "${CMAKE_MATCH_1}")
    set(code "(void)(int)(${CMAKE_MATCH_1});")
  elseif(line MATCHES "^use ([^:]+(::[^:]+)?): (.*)$")
    set(name "${CMAKE_MATCH_1}")
    set(code "${CMAKE_MATCH_3}")
  else()
    message(FATAL_ERROR "cmake/sdk_probe/uses.txt: cannot read '${line}'")
  endif()
  string(REPLACE ";" "@SEMI@" code "${code}") # kept out of the list's separators
  list(APPEND use_names "${name}")
  list(APPEND use_codes "{ ${code} }\n")
endforeach()

set(probe_dir ${PROJECT_BINARY_DIR}/sdk_probe)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY) # compiled only: the SDK's libraries are not here
string(REPLACE ";" "" all_code "${use_codes}")
noltdev_probe_source(${probe_dir}/all.cpp "${all_code}")
try_compile(sdk_probe_ok ${probe_dir}/all SOURCES ${probe_dir}/all.cpp
  CMAKE_FLAGS "-DINCLUDE_DIRECTORIES=${NOLTDEV_PLATFORM_INCLUDE_DIRS}"
  CXX_STANDARD 11 CXX_STANDARD_REQUIRED ON OUTPUT_VARIABLE all_output)
if(NOT sdk_probe_ok)
  # one use at a time, to name each that fails
  set(missing "")
  list(LENGTH use_names count)
  math(EXPR last "${count} - 1")
  foreach(i RANGE ${last})
    list(GET use_names ${i} name)
    list(GET use_codes ${i} code)
    string(MAKE_C_IDENTIFIER "${name}" id)
    noltdev_probe_source(${probe_dir}/${id}.cpp "${code}")
    try_compile(one_ok ${probe_dir}/${id} SOURCES ${probe_dir}/${id}.cpp
      CMAKE_FLAGS "-DINCLUDE_DIRECTORIES=${NOLTDEV_PLATFORM_INCLUDE_DIRS}"
      CXX_STANDARD 11 CXX_STANDARD_REQUIRED ON OUTPUT_VARIABLE one_output)
    if(NOT one_ok)
      list(APPEND missing "${name}")
    endif()
  endforeach()
  if(NOT missing)
    message(FATAL_ERROR "NOLTDEV_SDK_HEADERS: the SDK headers under ${sdk_dir} do not compile together:\n${all_output}")
  endif()
  list(JOIN missing "\n  " text)
  message(FATAL_ERROR "NOLTDEV_SDK_HEADERS: the SDK headers under ${sdk_dir} lack what the module uses:\n  ${text}")
endif()
message(STATUS "SDK headers from ${sdk_dir}: every use of the module compiles against them")
