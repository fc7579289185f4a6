# GNU libiconv's source: 1.14 from npm's iconv 3.0.1, where nobody names another, or from a release tarball.
#
# Sets `libiconv_c` to its one source to compile, and `libiconv_include_dirs` to what that includes; a problem goes into
# `catalogue_problems`. Configuring fetches npm's file where it is not at hand and BRAMBLECOR_FETCH_SOURCES allows that;
# nothing else here asks the network.
# SPDX-License-Identifier: LGPL-2.1-or-later
if(DEFINED ENV{XDG_CACHE_HOME})
  set(default_download_dir "$ENV{XDG_CACHE_HOME}/bramblecor-lan-fax")
else()
  set(default_download_dir "$ENV{HOME}/.cache/bramblecor-lan-fax")
endif()
set(BRAMBLECOR_LIBICONV_TARBALL "" CACHE FILEPATH
    "A release tarball of GNU libiconv to build it from, instead of what npm has")
set(BRAMBLECOR_DOWNLOAD_DIR "${default_download_dir}" CACHE PATH
    "Where libiconv's source (iconv-3.0.1.tgz) is looked for, and where tools/fetch-libiconv keeps it")
option(BRAMBLECOR_FETCH_SOURCES "Let configuring fetch libiconv's source where it is not at hand" OFF)

if(BRAMBLECOR_LIBICONV_TARBALL)
  unpack_release(libiconv "${BRAMBLECOR_LIBICONV_TARBALL}"
    "include/iconv.h.in;lib/iconv.c;lib/aliases.h;libcharset/include/localcharset.h.in" libiconv_release problem)
  if(problem)
    string(APPEND catalogue_problems "  BRAMBLECOR_LIBICONV_TARBALL: ${problem}.\n")
    return()
  endif()
  # Its headers, as its own build makes them for GNU/Linux.
  set(ICONV_CONST const)
  set(EILSEQ EILSEQ)
  set(USE_MBSTATE_T 1)
  set(BROKEN_WCHAR_H 0)
  set(HAVE_VISIBILITY 0)
  set(HAVE_WCHAR_T 1)
  set(libiconv_header_dir "${third_party_dir}/libiconv-headers")
  configure_file("${libiconv_release}/include/iconv.h.in" "${libiconv_header_dir}/iconv.h" @ONLY)
  configure_file("${libiconv_release}/libcharset/include/localcharset.h.in" "${libiconv_header_dir}/localcharset.h" @ONLY)
  configure_file("${pins_dir}/libiconv_config.h" "${libiconv_header_dir}/config.h" COPYONLY)
  set(libiconv_c "${libiconv_release}/lib/iconv.c")
  set(libiconv_include_dirs "${libiconv_header_dir}")
  return()
endif()

set(libiconv_pins "${pins_dir}/libiconv-1.14.sha256")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${libiconv_pins}")
set(libiconv_dir "${third_party_dir}/package")
set(libiconv_c "${libiconv_dir}/deps/libiconv/lib/iconv.c")
set(libiconv_include_dirs "${libiconv_dir}/support")
set(libiconv_stamp "${third_party_dir}/libiconv-1.14.sha256")
set(stamped "")
file(READ "${libiconv_pins}" pinned)
if(EXISTS "${libiconv_stamp}")
  file(READ "${libiconv_stamp}" stamped)
endif()
if(stamped STREQUAL pinned)
  return()
endif()

set(libiconv_archive "${BRAMBLECOR_DOWNLOAD_DIR}/iconv-3.0.1.tgz")
find_unpinned_file("${libiconv_pins}" "${BRAMBLECOR_DOWNLOAD_DIR}" unpinned)
set(libiconv_problem "")
if(unpinned AND BRAMBLECOR_FETCH_SOURCES)
  message(STATUS "Fetching libiconv's source into ${BRAMBLECOR_DOWNLOAD_DIR}")
  execute_process(COMMAND "${PROJECT_SOURCE_DIR}/tools/fetch-libiconv" "${BRAMBLECOR_DOWNLOAD_DIR}"
    RESULT_VARIABLE failed ERROR_VARIABLE complaint OUTPUT_QUIET)
  string(STRIP "${complaint}" complaint)
  find_unpinned_file("${libiconv_pins}" "${BRAMBLECOR_DOWNLOAD_DIR}" unpinned)
  if(unpinned)
    set(libiconv_problem "libiconv's source could not be fetched (${complaint}); run \
tools/fetch-libiconv ${BRAMBLECOR_DOWNLOAD_DIR} where there is a network")
  endif()
elseif(unpinned AND EXISTS "${libiconv_archive}")
  set(libiconv_problem "libiconv's source cannot be used: ${libiconv_archive} does not have its pinned SHA-256 checksum")
elseif(unpinned)
  set(libiconv_problem "libiconv's source is not at hand: ${libiconv_archive} is missing")
endif()
if(libiconv_problem)
  string(APPEND catalogue_problems "  ${libiconv_problem}; put that file of npm's iconv 3.0.1 there, or configure with \
-D BRAMBLECOR_FETCH_SOURCES=ON to have it fetched, or name a release tarball of GNU libiconv with \
-D BRAMBLECOR_LIBICONV_TARBALL=FILE.\n")
  return()
endif()
file(REMOVE_RECURSE "${libiconv_dir}")
file(ARCHIVE_EXTRACT INPUT "${libiconv_archive}" DESTINATION "${third_party_dir}"
  PATTERNS "package/deps/libiconv/*" "package/support/*" "package/LICENSE")
file(COPY_FILE "${libiconv_pins}" "${libiconv_stamp}")
