# GNU libintl and GNU libiconv, whose functions the component offers to its host.
#
# libintl 0.19.8 is compiled from what the package autopoint carries, libiconv 1.14 from npm's iconv 3.0.1, each file of
# them pinned by its SHA-256 checksum; either from a release tarball of GNU's where one is named (BRAMBLECOR_GETTEXT_TARBALL,
# BRAMBLECOR_LIBICONV_TARBALL). Of gettext's release only libintl is built, by its own configure and make.
# The target `message_catalogue` holds them: gettext and its kin, which call libintl's own functions and never the C
# library's, and libiconv, which libintl converts catalogues with.
# SPDX-License-Identifier: LGPL-2.1-or-later

add_library(message_catalogue INTERFACE)

# Not our sources: their warnings are not ours to mend, and what nobody calls is dropped.
function(compile_as_theirs target)
  set_target_properties(${target} PROPERTIES
    C_STANDARD 99 C_EXTENSIONS ON POSITION_INDEPENDENT_CODE ON EXPORT_COMPILE_COMMANDS OFF)
  target_compile_options(${target} PRIVATE -w -ffunction-sections -fdata-sections)
endfunction()

# --- libiconv ------------------------------------------------------------------------------

# iconv.c compiles the whole of libiconv; the locale's character set it has from us.
add_library(libiconv_objects OBJECT "${libiconv_c}" "${pins_dir}/locale_charset.c")
target_include_directories(libiconv_objects PRIVATE ${libiconv_include_dirs})
target_compile_definitions(libiconv_objects PRIVATE
  ICONV_CONST=const locale_charset=libiconv_locale_charset)
# Its header knows nothing of visibility; the version script keeps in what is not to leave.
set_target_properties(libiconv_objects PROPERTIES C_VISIBILITY_PRESET default)
compile_as_theirs(libiconv_objects)
target_sources(message_catalogue INTERFACE $<TARGET_OBJECTS:libiconv_objects>)

# --- libintl from a release ----------------------------------------------------------------

if(gettext_dir)
  include(ExternalProject)
  # Beside what the release was unpacked to: another one is built anew.
  get_filename_component(libintl_place "${gettext_dir}" DIRECTORY)
  set(libintl_build "${libintl_place}/libintl-build")
  set(libintl_archive "${libintl_build}/intl/.libs/libintl.a")
  string(TOUPPER "${CMAKE_BUILD_TYPE}" build_type)
  configure_file("${libiconv_include_dirs}/iconv.h" "${third_party_dir}/libiconv-alone/iconv.h" COPYONLY)
  # It converts with the libiconv above, which is there only when the component is linked: so its configure is told
  # what it would find. Of its rules those that make what is in every release are not wanted.
  ExternalProject_Add(libintl_release
    SOURCE_DIR "${gettext_dir}"
    BINARY_DIR "${libintl_build}"
    STAMP_DIR "${libintl_place}/libintl-stamps"
    TMP_DIR "${libintl_place}/libintl-tmp"
    DOWNLOAD_COMMAND ""
    CONFIGURE_COMMAND "${gettext_dir}/gettext-runtime/configure" --prefix=/usr --localedir=/usr/share/locale
      --with-included-gettext --enable-nls --disable-shared --enable-static --with-pic --enable-threads=posix
      --disable-java --disable-csharp --disable-c++ --disable-relocatable --disable-dependency-tracking
      "CC=${CMAKE_C_COMPILER}" "CPPFLAGS=-I${third_party_dir}/libiconv-alone"
      "CFLAGS=${CMAKE_C_FLAGS} ${CMAKE_C_FLAGS_${build_type}} -w -fPIC -ffunction-sections -fdata-sections"
      am_cv_func_iconv=yes am_cv_lib_iconv=no am_cv_func_iconv_works=yes am_cv_proto_iconv_arg1=
    BUILD_COMMAND "${MAKE_PROGRAM}" -C intl ACLOCAL=: AUTOCONF=: AUTOHEADER=: AUTOMAKE=: MAKEINFO=:
    BUILD_BYPRODUCTS "${libintl_archive}"
    INSTALL_COMMAND ""
    LOG_CONFIGURE ON LOG_BUILD ON LOG_OUTPUT_ON_FAILURE ON)
  add_library(libintl_archive STATIC IMPORTED GLOBAL)
  set_target_properties(libintl_archive PROPERTIES IMPORTED_LOCATION "${libintl_archive}")
  add_dependencies(libintl_archive libintl_release)
  target_link_libraries(message_catalogue INTERFACE libintl_archive)
  # Nothing of ours calls them: hosts do.
  foreach(function IN ITEMS
      gettext dgettext dcgettext ngettext textdomain bindtextdomain bind_textdomain_codeset)
    target_link_options(message_catalogue INTERFACE "LINKER:--undefined=${function}")
  endforeach()
  install(FILES "${gettext_dir}/gettext-runtime/intl/COPYING.LIB"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Runtime)
  return()
endif()

# --- libintl from autopoint ----------------------------------------------------------------

# libintl's public header, as its own build makes it for a system whose printf suits.
set(HAVE_NEWLOCALE 0)
set(HAVE_POSIX_PRINTF 1)
set(HAVE_SNPRINTF 1)
set(HAVE_ASPRINTF 1)
set(HAVE_WPRINTF 1)
set(libintl_header_dir "${third_party_dir}/libintl-headers")
configure_file("${libintl_dir}/libgnuintl.in.h" "${libintl_header_dir}/libgnuintl.h" @ONLY)
configure_file("${pins_dir}/libintl_config.h" "${libintl_header_dir}/config.h" COPYONLY)

set(libintl_sources
  bindtextdom.c dcgettext.c dcigettext.c dcngettext.c dgettext.c dngettext.c explodename.c finddomain.c
  gettext.c hash-string.c intl-compat.c l10nflist.c langprefs.c loadmsgcat.c localcharset.c localealias.c
  localename.c lock.c log.c ngettext.c plural-exp.c plural.c textdomain.c threadlib.c version.c)
list(TRANSFORM libintl_sources PREPEND "${libintl_dir}/")

add_library(libintl_objects OBJECT ${libintl_sources})
target_include_directories(libintl_objects PRIVATE
  "${libintl_header_dir}" "${libintl_dir}" ${libiconv_include_dirs})
target_compile_definitions(libintl_objects PRIVATE
  HAVE_CONFIG_H IN_LIBINTL BUILDING_LIBINTL BUILDING_DLL
  LOCALEDIR="/usr/share/locale" LOCALE_ALIAS_PATH="/usr/share/locale" LIBDIR="/usr/lib")
compile_as_theirs(libintl_objects)
target_sources(message_catalogue INTERFACE $<TARGET_OBJECTS:libintl_objects>)

# Both are under the GNU Lesser General Public License, whose text goes with them.
install(FILES "${libintl_dir}/COPYING.LIB" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Runtime)
