# Headers of others that many sources include, parsed once for all of them.
#
#   precompiled_headers(toolkit LIBRARIES PkgConfig::GTKMM HEADERS <gtkmm.h>)
#   precompile(driver_desktop WITH toolkit)
#
# The first names a set of headers, compiled as a target with these libraries would compile them, in addition to the
# standard library's; with PROGRAMS as the sources of programs are, otherwise as those of libraries. The second lets
# all sources of a target start with such a set. Only headers of others belong here: ours change. The set `standard`
# is for targets that are optimised when sanitized, `shared` for those of them that are libraries of their own.
#
# Without BRAMBLECOR_PRECOMPILED_HEADERS nothing happens, and each source includes itself what it uses: the release
# build would show one that does not.
# SPDX-License-Identifier: LGPL-2.1-or-later
include_guard(GLOBAL)

# What starts with a precompiled header can be kept by ccache only when it sees which: GCC's preprocessor has to name it,
# and clang to be given it in words that ccache reads.
if(BRAMBLECOR_PRECOMPILED_HEADERS)
  target_compile_options(bramblecor_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH -include-pch <PCH_FILE>)
  endif()
endif()

function(precompiled_headers name)
  if(NOT BRAMBLECOR_PRECOMPILED_HEADERS)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "PROGRAMS" "" "LIBRARIES;HEADERS")
  set(target precompiled_${name})
  add_library(${target} OBJECT EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp")
  target_link_libraries(${target} PRIVATE bramblecor_options ${arg_LIBRARIES})
  set(headers
    <algorithm> <array> <cerrno> <charconv> <chrono> <cstdint> <cstdlib> <cstring> <filesystem> <fstream> <functional>
    <iostream> <iterator> <map> <memory> <optional> <set> <sstream> <stdexcept> <string> <string_view> <thread>
    <unordered_map> <utility> <variant> <vector> ${arg_HEADERS})
  target_precompile_headers(${target} PRIVATE ${headers})
  # A precompiled header holds paths and times: each build makes its own, and ccache tells one from another by the
  # names of its headers instead. Their contents count beside that, as the compiler lists them as read, and so do the
  # compiler's options, which are those of what is compiled with it.
  set_target_properties(${target} PROPERTIES CXX_COMPILER_LAUNCHER "")
  foreach(ending pch gch)
    file(GENERATE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/cmake_pch.hxx.${ending}.sum"
      CONTENT "${name} ${CMAKE_CXX_COMPILER_VERSION} ${headers}\n")
  endforeach()
  if(arg_PROGRAMS)
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} PRIVATE -fPIE)
  endif()
endfunction()

function(precompile target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "WITH" "")
  if(BRAMBLECOR_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} REUSE_FROM precompiled_${arg_WITH})
  endif()
endfunction()

precompiled_headers(standard)
precompiled_headers(shared)
if(BRAMBLECOR_PRECOMPILED_HEADERS)
  optimise_when_sanitized(precompiled_standard)
  optimise_when_sanitized(precompiled_shared)
  set_target_properties(precompiled_shared PROPERTIES CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
endif()
