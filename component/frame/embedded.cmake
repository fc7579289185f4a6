# The dialog definition becomes constant data of the component.
# SPDX-License-Identifier: LGPL-2.1-or-later
include("${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake")

embed_text(TARGET component_frame SOURCE dialogs.xml SYMBOL dialogDefinitionText
           HEADER frame/dialog_definition.h SIZE 29520 XML)
