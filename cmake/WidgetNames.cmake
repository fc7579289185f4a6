# Gives a room a header with the names of all widgets, made from the dialog definition.
#
#   add_widget_names(TARGET driver_widgets HEADER driver/widgets/widget_names.h NAMESPACE quelm::widget_names)
#
# The header is made in the build tree, before anything is compiled that the room's target or one that links it holds,
# and is included by the name that HEADER says. WidgetNamesStep.cmake says what the constants are called. The target
# `generated_headers` makes the headers of all rooms and nothing else.
# SPDX-License-Identifier: LGPL-2.1-or-later
include_guard(GLOBAL)

set(WIDGET_NAMES_STEP "${CMAKE_CURRENT_LIST_DIR}/WidgetNamesStep.cmake" CACHE INTERNAL "")
add_custom_target(generated_headers)

function(add_widget_names)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;HEADER;NAMESPACE" "")
  foreach(name TARGET HEADER NAMESPACE)
    if(NOT arg_${name})
      message(FATAL_ERROR "add_widget_names: ${name} is missing")
    endif()
  endforeach()
  set(definition "${PROJECT_SOURCE_DIR}/component/frame/dialogs.xml")
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/generated")
  set(header "${folder}/${arg_HEADER}")

  add_custom_command(
    OUTPUT "${header}"
    COMMAND "${CMAKE_COMMAND}" -D "SOURCE=${definition}" -D "OUTPUT=${header}" -D "NAMESPACE=${arg_NAMESPACE}"
            -P "${WIDGET_NAMES_STEP}"
    DEPENDS "${definition}" "${WIDGET_NAMES_STEP}"
    COMMENT "Naming the widgets in ${arg_HEADER}"
    VERBATIM)
  add_custom_target(${arg_TARGET}_widget_names DEPENDS "${header}")
  add_dependencies(generated_headers ${arg_TARGET}_widget_names)
  add_dependencies(${arg_TARGET} ${arg_TARGET}_widget_names)
  target_include_directories(${arg_TARGET} PUBLIC "${folder}")
endfunction()
