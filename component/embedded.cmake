# The dialog definition becomes constant data of the component.
include("${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake")

embed_text(TARGET lanfax_objects SOURCE dialogs.xml SYMBOL dialogDefinitionText
           HEADER component/dialog_definition.h SIZE 29520 XML)
