# GNU libintl and GNU libiconv, whose functions the component offers to its host.
#
# Both are compiled from packages, each file of them pinned by its SHA-256 checksum: libintl 0.19.8 from Debian's
# autopoint, which is installed, libiconv 1.14 from npm's iconv 3.0.1. Configuring fetches the latter where it is not
# at hand and BRAMBLECOR_FETCH_SOURCES allows that; nothing else here asks the network.
# The target `message_catalogue` holds the objects: gettext and its kin, which call libintl's own
# functions and never the C library's, and libiconv, which libintl converts catalogues with.
# SPDX-License-Identifier: LGPL-2.1-or-later

if(DEFINED ENV{XDG_CACHE_HOME})
  set(default_download_dir "$ENV{XDG_CACHE_HOME}/bramblecor-lan-fax")
else()
  set(default_download_dir "$ENV{HOME}/.cache/bramblecor-lan-fax")
endif()
set(BRAMBLECOR_DOWNLOAD_DIR "${default_download_dir}" CACHE PATH
    "Where libiconv's source (iconv-3.0.1.tgz) is looked for, and where tools/fetch-libiconv keeps it")
option(BRAMBLECOR_FETCH_SOURCES "Let configuring fetch libiconv's source where it is not at hand" OFF)
set(BRAMBLECOR_AUTOPOINT_DIR "/usr/share/gettext" CACHE PATH
    "The folder of the package autopoint that holds archive.dir.tar.xz")

set(third_party_dir "${CMAKE_BINARY_DIR}/third-party")
set(pins_dir "${PROJECT_SOURCE_DIR}/cmake/third-party")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  "${pins_dir}/libintl-0.19.8.sha256" "${pins_dir}/libiconv-1.14.sha256")

# Sets `result` to the first file of `folder` that is missing or differs from the checksums in
# `pins` (the format of sha256sum), or to nothing when all are as pinned.
function(find_unpinned_file pins folder result)
  set(${result} "" PARENT_SCOPE)
  file(STRINGS "${pins}" lines)
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^([0-9a-f]+)  (.+)$")
      message(FATAL_ERROR "${pins}: no checksum line: ${line}")
    endif()
    set(expected "${CMAKE_MATCH_1}")
    set(name "${CMAKE_MATCH_2}")
    set(actual "")
    if(EXISTS "${folder}/${name}")
      file(SHA256 "${folder}/${name}" actual)
    endif()
    if(NOT actual STREQUAL expected)
      set(${result} "${name}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

# --- libintl -------------------------------------------------------------------------------

set(libintl_dir "${third_party_dir}/gettext-0.19.8/intl")
find_unpinned_file("${pins_dir}/libintl-0.19.8.sha256" "${libintl_dir}" unpinned)
if(unpinned)
  set(archive "${BRAMBLECOR_AUTOPOINT_DIR}/archive.dir.tar.xz")
  if(NOT EXISTS "${archive}")
    message(FATAL_ERROR "libintl's source is not installed (${archive}): install the package autopoint")
  endif()
  file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${third_party_dir}" PATTERNS "gettext-0.19.8/intl/*")
  find_unpinned_file("${pins_dir}/libintl-0.19.8.sha256" "${libintl_dir}" unpinned)
  if(unpinned)
    message(FATAL_ERROR "${archive}: gettext-0.19.8/intl/${unpinned} is missing or does not have its "
                        "pinned SHA-256 checksum: install another version of the package autopoint")
  endif()
endif()

# libintl's public header, as its own build makes it for a system whose printf suits.
set(HAVE_NEWLOCALE 0)
set(HAVE_POSIX_PRINTF 1)
set(HAVE_SNPRINTF 1)
set(HAVE_ASPRINTF 1)
set(HAVE_WPRINTF 1)
set(libintl_header_dir "${third_party_dir}/libintl-headers")
configure_file("${libintl_dir}/libgnuintl.in.h" "${libintl_header_dir}/libgnuintl.h" @ONLY)
configure_file("${pins_dir}/libintl_config.h" "${libintl_header_dir}/config.h" COPYONLY)

# --- libiconv ------------------------------------------------------------------------------

set(libiconv_dir "${third_party_dir}/package")
set(libiconv_stamp "${third_party_dir}/libiconv-1.14.sha256")
set(stamped "")
set(pinned "")
file(READ "${pins_dir}/libiconv-1.14.sha256" pinned)
if(EXISTS "${libiconv_stamp}")
  file(READ "${libiconv_stamp}" stamped)
endif()
if(NOT stamped STREQUAL pinned)
  find_unpinned_file("${pins_dir}/libiconv-1.14.sha256" "${BRAMBLECOR_DOWNLOAD_DIR}" unpinned)
  if(unpinned AND NOT BRAMBLECOR_FETCH_SOURCES)
    set(archive "${BRAMBLECOR_DOWNLOAD_DIR}/${unpinned}")
    set(problem "is not at hand: ${archive} is missing")
    if(EXISTS "${archive}")
      set(problem "cannot be used: ${archive} does not have its pinned SHA-256 checksum")
    endif()
    # The leading blanks keep CMake from wrapping the words.
    message(FATAL_ERROR "  libiconv's source ${problem}; put that file of npm's iconv 3.0.1 there, or configure with "
                        "-D BRAMBLECOR_FETCH_SOURCES=ON to have it fetched.")
  endif()
  if(unpinned)
    message(STATUS "Fetching libiconv's source into ${BRAMBLECOR_DOWNLOAD_DIR}")
    execute_process(COMMAND "${PROJECT_SOURCE_DIR}/tools/fetch-libiconv" "${BRAMBLECOR_DOWNLOAD_DIR}"
      RESULT_VARIABLE failed ERROR_VARIABLE complaint OUTPUT_QUIET)
    if(failed)
      string(STRIP "${complaint}" complaint)
      message(FATAL_ERROR "libiconv's source is not at hand (${complaint}): "
                          "run tools/fetch-libiconv ${BRAMBLECOR_DOWNLOAD_DIR}")
    endif()
    find_unpinned_file("${pins_dir}/libiconv-1.14.sha256" "${BRAMBLECOR_DOWNLOAD_DIR}" unpinned)
    if(unpinned)
      message(FATAL_ERROR "${BRAMBLECOR_DOWNLOAD_DIR}/${unpinned} does not have its pinned SHA-256 "
                          "checksum: remove it and run tools/fetch-libiconv ${BRAMBLECOR_DOWNLOAD_DIR}")
    endif()
  endif()
  file(REMOVE_RECURSE "${libiconv_dir}")
  file(ARCHIVE_EXTRACT INPUT "${BRAMBLECOR_DOWNLOAD_DIR}/iconv-3.0.1.tgz" DESTINATION "${third_party_dir}"
    PATTERNS "package/deps/libiconv/*" "package/support/*" "package/LICENSE")
  file(COPY_FILE "${pins_dir}/libiconv-1.14.sha256" "${libiconv_stamp}")
endif()

# --- The objects ---------------------------------------------------------------------------

set(libintl_sources
  bindtextdom.c dcgettext.c dcigettext.c dcngettext.c dgettext.c dngettext.c explodename.c finddomain.c
  gettext.c hash-string.c intl-compat.c l10nflist.c langprefs.c loadmsgcat.c localcharset.c localealias.c
  localename.c lock.c log.c ngettext.c plural-exp.c plural.c textdomain.c threadlib.c version.c)
list(TRANSFORM libintl_sources PREPEND "${libintl_dir}/")

add_library(libintl_objects OBJECT ${libintl_sources})
target_include_directories(libintl_objects PRIVATE
  "${libintl_header_dir}" "${libintl_dir}" "${libiconv_dir}/support")
target_compile_definitions(libintl_objects PRIVATE
  HAVE_CONFIG_H IN_LIBINTL BUILDING_LIBINTL BUILDING_DLL
  LOCALEDIR="/usr/share/locale" LOCALE_ALIAS_PATH="/usr/share/locale" LIBDIR="/usr/lib")

# iconv.c compiles the whole of libiconv. The locale's character set comes from libintl: what
# the package has in its place knows none.
add_library(libiconv_objects OBJECT "${libiconv_dir}/deps/libiconv/lib/iconv.c")
target_include_directories(libiconv_objects PRIVATE "${libiconv_dir}/support")
target_compile_definitions(libiconv_objects PRIVATE ICONV_CONST=const)
# Its header knows nothing of visibility; the version script keeps in what is not to leave.
set_target_properties(libiconv_objects PROPERTIES C_VISIBILITY_PRESET default)

foreach(target IN ITEMS libintl_objects libiconv_objects)
  set_target_properties(${target} PROPERTIES
    C_STANDARD 99 C_EXTENSIONS ON POSITION_INDEPENDENT_CODE ON EXPORT_COMPILE_COMMANDS OFF)
  # Not our sources: their warnings are not ours to mend, and what nobody calls is dropped.
  target_compile_options(${target} PRIVATE -w -ffunction-sections -fdata-sections)
endforeach()

add_library(message_catalogue INTERFACE)
target_sources(message_catalogue INTERFACE
  $<TARGET_OBJECTS:libintl_objects> $<TARGET_OBJECTS:libiconv_objects>)

# Both are under the GNU Lesser General Public License, whose text goes with them.
install(FILES "${libintl_dir}/COPYING.LIB" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Runtime)
