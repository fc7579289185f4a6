# GNU libintl's source: from the package autopoint, where nobody names another, or from a release tarball of gettext.
#
# Sets `libintl_dir` to the folder of libintl 0.19.8, or `gettext_dir` to that of a release; a problem goes into
# `catalogue_problems`. Nothing here asks the network.
# SPDX-License-Identifier: LGPL-2.1-or-later
set(BRAMBLECOR_GETTEXT_TARBALL "" CACHE FILEPATH
    "A release tarball of GNU gettext to build libintl from, instead of what autopoint has")
set(BRAMBLECOR_AUTOPOINT_DIR "/usr/share/gettext" CACHE PATH
    "The folder of the package autopoint that holds archive.dir.tar.xz, or .tar.gz")

set(gettext_dir "")
set(libintl_dir "")
if(BRAMBLECOR_GETTEXT_TARBALL)
  unpack_release(gettext "${BRAMBLECOR_GETTEXT_TARBALL}" "gettext-runtime/configure;gettext-runtime/intl/libgnuintl.in.h"
    gettext_dir problem)
  if(problem)
    string(APPEND catalogue_problems "  BRAMBLECOR_GETTEXT_TARBALL: ${problem}.\n")
  endif()
  need_program(MAKE_PROGRAM make FOR "builds libintl from its release" DEBIAN make FEDORA make)
  return()
endif()

set(libintl_pins "${pins_dir}/libintl-0.19.8.sha256")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${libintl_pins}")
set(libintl_dir "${third_party_dir}/gettext-0.19.8/intl")
find_unpinned_file("${libintl_pins}" "${libintl_dir}" unpinned)
if(NOT unpinned)
  return()
endif()

# The archive is packed as the distribution likes; autopoint knows where it put it.
set(autopoint_archive "")
set(autopoint_problem "")
foreach(ending IN ITEMS xz gz bz2)
  if(NOT autopoint_archive AND EXISTS "${BRAMBLECOR_AUTOPOINT_DIR}/archive.dir.tar.${ending}")
    set(autopoint_archive "${BRAMBLECOR_AUTOPOINT_DIR}/archive.dir.tar.${ending}")
  endif()
endforeach()
if(autopoint_archive)
  file(ARCHIVE_EXTRACT INPUT "${autopoint_archive}" DESTINATION "${third_party_dir}" PATTERNS "gettext-0.19.8/intl/*")
  find_unpinned_file("${libintl_pins}" "${libintl_dir}" unpinned)
  if(unpinned)
    set(autopoint_problem "libintl's source cannot be used: in ${autopoint_archive}, gettext-0.19.8/intl/${unpinned} is \
missing or does not have its pinned SHA-256 checksum")
  endif()
else()
  set(autopoint_problem
    "libintl's source is not installed: there is no archive.dir.tar.xz or .tar.gz in ${BRAMBLECOR_AUTOPOINT_DIR}")
endif()
if(autopoint_problem)
  string(APPEND catalogue_problems "  ${autopoint_problem}; install the package autopoint (Fedora: gettext-devel), or \
name a release tarball of GNU gettext with -D BRAMBLECOR_GETTEXT_TARBALL=FILE.\n")
endif()
