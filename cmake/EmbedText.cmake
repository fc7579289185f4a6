# Turns a readable text file into a constant data object of a target.
#
#   embed_text(TARGET component_frame SOURCE dialogs.xml SYMBOL dialogDefinitionText
#              HEADER component/frame/dialog_definition.h SIZE 29520 XML)
#
# SOURCE (relative to the calling file's folder) becomes `const char SYMBOL[SIZE + 1]`, NUL-terminated, as
# HEADER declares it. The build stops when the text has not exactly SIZE bytes: hosts rely on the sizes.
# Without XML the text is taken byte for byte; with XML the rules of EmbedTextStep.cmake make it one line.
# SPDX-License-Identifier: LGPL-2.1-or-later
include_guard(GLOBAL)

set(EMBED_TEXT_STEP "${CMAKE_CURRENT_LIST_DIR}/EmbedTextStep.cmake" CACHE INTERNAL "")

function(embed_text)
  cmake_parse_arguments(PARSE_ARGV 0 arg "XML" "TARGET;SOURCE;SYMBOL;HEADER;SIZE" "")
  foreach(name TARGET SOURCE SYMBOL HEADER SIZE)
    if(NOT arg_${name})
      message(FATAL_ERROR "embed_text: ${name} is missing")
    endif()
  endforeach()
  cmake_path(ABSOLUTE_PATH arg_SOURCE BASE_DIRECTORY "${CMAKE_CURRENT_LIST_DIR}" OUTPUT_VARIABLE source)
  set(generated "${CMAKE_CURRENT_BINARY_DIR}/${arg_SYMBOL}.cpp")

  add_custom_command(
    OUTPUT "${generated}"
    COMMAND "${CMAKE_COMMAND}" -D "SOURCE=${source}" -D "OUTPUT=${generated}" -D "SYMBOL=${arg_SYMBOL}"
            -D "HEADER=${arg_HEADER}" -D "SIZE=${arg_SIZE}" -D "XML=${arg_XML}" -P "${EMBED_TEXT_STEP}"
    DEPENDS "${source}" "${EMBED_TEXT_STEP}"
    COMMENT "Embedding ${arg_SOURCE}"
    VERBATIM)

  # The target may belong to another folder, which sees the command's output only through a target.
  add_custom_target(embed_${arg_SYMBOL} DEPENDS "${generated}")
  add_dependencies(${arg_TARGET} embed_${arg_SYMBOL})
  target_sources(${arg_TARGET} PRIVATE "${generated}")
endfunction()
