# Language level, warnings, visibility and sanitizers shared by everything that we compile.
# SPDX-License-Identifier: LGPL-2.1-or-later
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The compiler's cache serves every clone of the project alike: paths below the root are taken relative to
# the build folder, whose own place does not count.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1
    # The compiler says itself what it has read: no need to let the preprocessor run first.
    CCACHE_DEPEND=1
    # What a precompiled header needs: it stands for macros, and carries no time of ours.
    CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_PCH_EXTSUM=1
    "${CCACHE_PROGRAM}")
  set(CMAKE_C_COMPILER_LAUNCHER "${CMAKE_CXX_COMPILER_LAUNCHER}")
endif()

set(BRAMBLECOR_SANITIZERS "" CACHE STRING "Sanitizers to build with, such as address,undefined")
option(BRAMBLECOR_WERROR "Treat warnings as errors, as the presets do" OFF)
option(BRAMBLECOR_PRECOMPILED_HEADERS "Parse the headers of others once for many sources" OFF)
option(BRAMBLECOR_FAST_LINKER "Link with mold, where it is installed" OFF)

# Our own targets link this; it carries the project root as the include folder, so that every
# include names its folder: "host/calls.h", "driver/store/record_store.h".
add_library(bramblecor_options INTERFACE)
target_compile_features(bramblecor_options INTERFACE cxx_std_20)
target_include_directories(bramblecor_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(bramblecor_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  $<$<BOOL:${BRAMBLECOR_WERROR}>:-Werror>)
if(BRAMBLECOR_SANITIZERS)
  target_compile_options(bramblecor_options INTERFACE
    -fsanitize=${BRAMBLECOR_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all
    # The boundary has every callback called as one type of function, whatever arguments it declares.
    $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fno-sanitize=function>)
  target_link_options(bramblecor_options INTERFACE -fsanitize=${BRAMBLECOR_SANITIZERS})
endif()
if(BRAMBLECOR_FAST_LINKER)
  find_program(MOLD_PROGRAM mold)
  if(MOLD_PROGRAM)
    target_link_options(bramblecor_options INTERFACE -fuse-ld=mold)
  else()
    message(STATUS "Linking with the compiler's own linker: mold is not installed")
  endif()
endif()

# Lets a target that does much work run fast under the sanitizers: its tests would take far longer than optimising it
# does. For a target that does little it is the other way round.
function(optimise_when_sanitized target)
  if(BRAMBLECOR_SANITIZERS)
    target_compile_options(${target} PRIVATE -O1)
  endif()
endfunction()
