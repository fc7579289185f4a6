# Where the sources of GNU libintl and GNU libiconv are: cmake/MessageCatalogue.cmake builds what is found here.
# SPDX-License-Identifier: LGPL-2.1-or-later
include("${CMAKE_CURRENT_LIST_DIR}/SourceFiles.cmake")
set(catalogue_problems "")
include("${CMAKE_CURRENT_LIST_DIR}/LibintlSource.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/LibiconvSource.cmake")
