# The plug-in as it leaves the house: the component's objects, libintl and libiconv in one library.
# SPDX-License-Identifier: LGPL-2.1-or-later
include("${PROJECT_SOURCE_DIR}/cmake/MessageCatalogue.cmake")

add_library(BramblecorLanFax SHARED
  $<TARGET_OBJECTS:component_common>
  $<TARGET_OBJECTS:component_model>
  $<TARGET_OBJECTS:component_output>
  $<TARGET_OBJECTS:component_phonebook>
  $<TARGET_OBJECTS:component_directory>
  $<TARGET_OBJECTS:component_ui>
  $<TARGET_OBJECTS:component_frame>)
set(exports_map "${CMAKE_CURRENT_LIST_DIR}/exports.map")
set_target_properties(BramblecorLanFax PROPERTIES
  LIBRARY_OUTPUT_DIRECTORY "${BRAMBLECOR_STAGE_DIR}"
  LINK_DEPENDS "${exports_map}"
  EXPORT_NAME component)
target_link_libraries(BramblecorLanFax PRIVATE bramblecor_options message_catalogue)
target_link_options(BramblecorLanFax PRIVATE
  "LINKER:--version-script=${exports_map}"
  # A host may have functions of these names too (every C library has a gettext): what is defined
  # here calls what is defined here. Data stays open, so that the host's variables are found.
  "LINKER:-Bsymbolic-functions"
  "LINKER:--gc-sections"
  # A host that lacks a function which it never leads us to still loads us.
  "LINKER:-z,lazy"
  "LINKER:-z,noexecstack"
  "LINKER:-z,relro"
  "LINKER:-z,text")
# No "-z defs": the host brings its boundary along, and it is found when the host loads us.
