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

# What distributions harden their programs with, for whatever we release: here, so that a package of it is made by the
# compiler's same command lines, and so from the compiler's cache. The libraries of others in the component have it,
# too. Debug information names files from the root, wherever that is: packages built twice are the same.
set(released "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fstack-clash-protection HAS_STACK_CLASH_PROTECTION)
check_cxx_compiler_flag(-fcf-protection HAS_CF_PROTECTION)
add_compile_options(
  # Some compilers define it themselves.
  $<${released}:-U_FORTIFY_SOURCE> $<${released}:-D_FORTIFY_SOURCE=2> $<${released}:-fstack-protector-strong>
  $<$<AND:${released},$<BOOL:${HAS_STACK_CLASH_PROTECTION}>>:-fstack-clash-protection>
  $<$<AND:${released},$<BOOL:${HAS_CF_PROTECTION}>>:-fcf-protection>
  # The last one that fits counts.
  $<${released}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>
  $<${released}:-ffile-prefix-map=${CMAKE_BINARY_DIR}=./build>)
# Programs have all that they call bound at their start, and their tables closed to writing. The component is bound as
# it is called: a host may lack a function that it never comes to.
set(is_program "$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>")
add_link_options($<${released}:LINKER:-z,relro>
  $<$<AND:${released},${is_program}>:LINKER:-z,now> $<$<AND:${released},${is_program}>:-pie>)

# Lets a target that does much work run fast under the sanitizers: its tests would take far longer than optimising it
# does. For a target that does little it is the other way round.
function(optimise_when_sanitized target)
  if(BRAMBLECOR_SANITIZERS)
    target_compile_options(${target} PRIVATE -O1)
  endif()
endfunction()
