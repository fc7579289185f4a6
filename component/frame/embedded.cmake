# The dialog definition becomes constant data of the component.
include("${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake")

embed_text(TARGET component_frame SOURCE dialogs.xml SYMBOL dialogDefinitionText
           HEADER frame/dialog_definition.h SIZE 29520 XML)
