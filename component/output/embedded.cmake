# The two texts of the cover page become constant data of the component.
# SPDX-License-Identifier: LGPL-2.1-or-later
include("${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake")

embed_text(TARGET component_output SOURCE cover_page_header.txt SYMBOL coverPageHeaderText
           HEADER output/cover_page.h SIZE 593)
embed_text(TARGET component_output SOURCE cover_page.ps SYMBOL coverPageTrailerText
           HEADER output/cover_page.h SIZE 12848)
