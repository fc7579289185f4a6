# The manual pages in each language, and the completions, where man and the shells look for them.
# SPDX-License-Identifier: LGPL-2.1-or-later
install(DIRECTORY "${CMAKE_BINARY_DIR}/manual/man/" DESTINATION "${CMAKE_INSTALL_MANDIR}" COMPONENT Runtime
  FILES_MATCHING PATTERN "*.1")
install(DIRECTORY "${CMAKE_BINARY_DIR}/manual/completions/bash/"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT Runtime)
install(DIRECTORY "${CMAKE_BINARY_DIR}/manual/completions/zsh/"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" COMPONENT Runtime)
install(DIRECTORY "${CMAKE_BINARY_DIR}/manual/completions/fish/"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT Runtime)
