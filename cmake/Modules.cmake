# Modules: parts of the programs that are loaded when they are used first (base/module.h), and where programs and
# modules find the library that they share.
#
#   add_module(contacts ROOM driver/contacts ENTRY module.cpp)
#
# makes modules/contacts.so of the stage folder from the room and a source that shows `quelmModule`, and installs it.
# Its target is module_contacts; the target `modules` is all of them.
#
#   finds_base(quelm-driver)
#
# lets a program of the home folder find libquelm-base beside itself, where it was built and where it is installed.
# SPDX-License-Identifier: LGPL-2.1-or-later
include_guard(GLOBAL)

# Program and module speak with each other in C++, for which they must come from one build.
set(QUELM_BUILD_NAME "${PROJECT_VERSION} ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} ${CMAKE_BUILD_TYPE}"
  CACHE INTERNAL "What the programs and modules of this build go by")

add_custom_target(modules)

# Leaves out the libraries that rooms name and the target calls nothing of.
function(loads_only_what_it_uses target)
  target_link_options(${target} PRIVATE LINKER:--as-needed)
endfunction()

function(finds_base target)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
  loads_only_what_it_uses(${target})
endfunction()

# What the linker lets out of a library of ours, by a version script.
function(exports_only target script)
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
  if(NOT BRAMBLECOR_SANITIZERS)
    # All that it calls is there; a sanitizer's functions are in the program.
    target_link_options(${target} PRIVATE LINKER:-z,defs)
  endif()
endfunction()

function(add_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "ROOM;ENTRY" "")
  set(target module_${name})
  string(REPLACE "/" "_" room "${arg_ROOM}")
  add_library(${target} MODULE "${arg_ENTRY}")
  target_compile_definitions(${target} PRIVATE "QUELM_BUILD_NAME=\"${QUELM_BUILD_NAME}\"")
  target_link_libraries(${target} PRIVATE ${room})
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${name} PREFIX "" SUFFIX ".so"
    LIBRARY_OUTPUT_DIRECTORY "${BRAMBLECOR_STAGE_DIR}/modules"
    INSTALL_RPATH "$ORIGIN/.." BUILD_WITH_INSTALL_RPATH ON)
  loads_only_what_it_uses(${target})
  exports_only(${target} "${PROJECT_SOURCE_DIR}/cmake/module.map")
  add_dependencies(modules ${target})
  install(TARGETS ${target} LIBRARY DESTINATION "${BRAMBLECOR_INSTALL_HOME}/modules" COMPONENT Runtime)
endfunction()
