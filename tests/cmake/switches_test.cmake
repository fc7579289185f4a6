# The build's switches: configures the component alone, far from any network, and looks at what that does.
# Run as: cmake -D PROJECT=root -D DOWNLOADS=folder-of-iconv-3.0.1.tgz -D WORK=folder-of-its-own -P this-file
# SPDX-License-Identifier: LGPL-2.1-or-later
cmake_minimum_required(VERSION 3.22)

include("${CMAKE_CURRENT_LIST_DIR}/configuring.cmake")

# Expects the words of a compiler's option in how the sources are compiled, or their absence.
function(expect_option what option present)
  file(STRINGS "${build}/compile_commands.json" lines REGEX "\"command\".*component/model/fax_job\\.cpp")
  if(lines STREQUAL "")
    message(SEND_ERROR "${what}: no source is compiled")
  endif()
  string(FIND "${lines}" " ${option} " found)
  if(present AND found EQUAL -1)
    message(SEND_ERROR "${what}: the sources are compiled without ${option}")
  elseif(NOT present AND NOT found EQUAL -1)
    message(SEND_ERROR "${what}: the sources are compiled with ${option}")
  endif()
endfunction()

# --- BRAMBLECOR_FETCH_SOURCES ---

set(remedy "put that file of npm's iconv 3.0.1 there, or configure with -D BRAMBLECOR_FETCH_SOURCES=ON to have it fetched, or name a release tarball of GNU libiconv with -D BRAMBLECOR_LIBICONV_TARBALL=FILE.")
configure()
expect_refusal("no source" "libiconv's source is not at hand: ${archive} is missing; ${remedy}")
expect_no_fetching("no source")

file(WRITE "${archive}" "another archive")
configure()
expect_refusal("another source"
  "libiconv's source cannot be used: ${archive} does not have its pinned SHA-256 checksum; ${remedy}")
expect_no_fetching("another source")
file(REMOVE "${archive}")

configure(-D BRAMBLECOR_FETCH_SOURCES=ON)
expect_fetching("a network that is away")
expect_refusal("a network that is away" "npm has no network here")

file(COPY_FILE "${pinned_archive}" "${WORK}/bin/archive")
configure(-D BRAMBLECOR_FETCH_SOURCES=ON)
expect_fetching("the source of the network")
expect_success("the source of the network")

configure(-D BRAMBLECOR_FETCH_SOURCES=ON)
expect_no_fetching("the source at hand")
expect_success("the source at hand")

# --- BRAMBLECOR_WERROR ---

configure()
expect_no_fetching("the source at hand, and no switch")
expect_success("the source at hand, and no switch")
expect_option("no switch" -Werror FALSE)
expect_option("no switch" -Wall TRUE)

configure(-D BRAMBLECOR_WERROR=ON)
expect_success("the switch for warnings")
expect_option("the switch for warnings" -Werror TRUE)

# --- What `make` and the presets switch on ---

# Expects that a preset has a value for a variable; with "" that it has none.
function(expect_preset preset variable expected)
  execute_process(COMMAND "${CMAKE_COMMAND}" -N --preset "${preset}" WORKING_DIRECTORY "${PROJECT}"
    RESULT_VARIABLE result OUTPUT_VARIABLE words ERROR_VARIABLE words)
  set(value "")
  if(words MATCHES "\n *${variable}(:[A-Z]+)?=\"([^\"]*)\"")
    set(value "${CMAKE_MATCH_2}")
  endif()
  if(NOT result EQUAL 0 OR NOT value STREQUAL expected)
    message(SEND_ERROR "the preset ${preset}: ${variable} is \"${value}\" instead of \"${expected}\": ${words}")
  endif()
endfunction()

foreach(preset IN ITEMS asan bench dev m32)
  expect_preset(${preset} BRAMBLECOR_WERROR ON)
  expect_preset(${preset} BRAMBLECOR_FETCH_SOURCES ON)
endforeach()
expect_preset(release BRAMBLECOR_WERROR ON)
expect_preset(release BRAMBLECOR_FETCH_SOURCES "")

# Ubuntu 22.04 has CMake 3.22: it reads presets of version 3, and refuses a project that asks for more.
file(READ "${PROJECT}/CMakePresets.json" presets)
string(JSON version GET "${presets}" version)
if(version GREATER 3)
  message(SEND_ERROR "the presets are of version ${version}, which CMake 3.22 does not read")
endif()
file(GLOB_RECURSE parts "${PROJECT}/cmake/*.cmake" "${PROJECT}/tests/*.cmake" "${PROJECT}/tests/*CMakeLists.txt")
foreach(part IN LISTS parts ITEMS "${PROJECT}/CMakeLists.txt")
  file(STRINGS "${part}" asked REGEX "^cmake_minimum_required\\(VERSION ")
  if(asked AND NOT asked STREQUAL "cmake_minimum_required(VERSION 3.22)")
    message(SEND_ERROR "${part} asks for another version of CMake: ${asked}")
  endif()
endforeach()

execute_process(COMMAND make --no-print-directory --dry-run build WORKING_DIRECTORY "${PROJECT}"
  OUTPUT_VARIABLE commands)
if(NOT commands MATCHES "cmake --preset release [^\n]*-D BRAMBLECOR_FETCH_SOURCES=ON")
  message(SEND_ERROR "make build does not let the build fetch what it needs: ${commands}")
endif()

file(REMOVE_RECURSE "${WORK}")
