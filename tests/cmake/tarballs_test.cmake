# libintl and libiconv from release tarballs that somebody names: what is taken, what is refused, and how they are built.
# Run as: cmake -D PROJECT=root -D DOWNLOADS=folder-of-iconv-3.0.1.tgz -D WORK=folder-of-its-own -P this-file
# SPDX-License-Identifier: LGPL-2.1-or-later
cmake_minimum_required(VERSION 3.22)
include("${CMAKE_CURRENT_LIST_DIR}/configuring.cmake")

# Packs a folder of ${WORK}/releases into a tarball of that name there.
function(pack folder tarball)
  execute_process(COMMAND "${CMAKE_COMMAND}" -E tar czf "${tarball}" "${folder}" WORKING_DIRECTORY "${WORK}/releases"
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Builds one target; leaves its exit status in `result`, its words in `words`.
function(build target)
  execute_process(COMMAND "${CMAKE_COMMAND}" --build "${build}" --target ${target}
    RESULT_VARIABLE result OUTPUT_VARIABLE words ERROR_VARIABLE words)
  set(result "${result}" PARENT_SCOPE)
  set(words "${words}" PARENT_SCOPE)
endfunction()

# --- libiconv: a release in the layout of GNU's, of a version that nobody knows ---

file(ARCHIVE_EXTRACT INPUT "${pinned_archive}" DESTINATION "${WORK}/npm")
set(release "${WORK}/releases/libiconv-1.99")
file(COPY "${WORK}/npm/package/deps/libiconv/lib" DESTINATION "${release}")
file(COPY_FILE "${WORK}/npm/package/support/iconv.h" "${WORK}/iconv.h")
file(READ "${WORK}/iconv.h" header)
string(REPLACE "typedef void* iconv_t;" "typedef void* iconv_t;\n#define ICONV_ILSEQ @EILSEQ@\n" header "${header}")
file(WRITE "${release}/include/iconv.h.in" "${header}")
file(COPY "${WORK}/npm/package/support/localcharset.h" DESTINATION "${release}/libcharset/include")
file(RENAME "${release}/libcharset/include/localcharset.h" "${release}/libcharset/include/localcharset.h.in")
pack(libiconv-1.99 libiconv-1.99.tar.gz)
set(tarball "${WORK}/releases/libiconv-1.99.tar.gz")

configure(-D "BRAMBLECOR_LIBICONV_TARBALL=${tarball}")
expect_success("a release of libiconv")
expect_no_fetching("a release of libiconv")
expect_words("a release of libiconv" "libiconv-1.99: from ${tarball}, as it is: no checksum of this release is known here")
build(libiconv_objects)
expect_success("building that release of libiconv")

# A path as a person types it, from where he is.
file(RELATIVE_PATH from_here "${CMAKE_BINARY_DIR}" "${tarball}")
configure(-D "BRAMBLECOR_LIBICONV_TARBALL=${from_here}")
expect_success("a path from here")

# A release that is known is that release.
file(RENAME "${release}" "${WORK}/releases/libiconv-1.17")
pack(libiconv-1.17 altered.tar.gz)
configure(-D "BRAMBLECOR_LIBICONV_TARBALL=${WORK}/releases/altered.tar.gz")
expect_refusal("an altered release" "${WORK}/releases/altered.tar.gz is not GNU's libiconv-1.17.tar.gz: its SHA-256 \
checksum is another one")

# --- What is no release ---

configure(-D "BRAMBLECOR_LIBICONV_TARBALL=${WORK}/releases/gone.tar.gz")
expect_refusal("a file that is away"
  "BRAMBLECOR_LIBICONV_TARBALL: ${WORK}/releases/gone.tar.gz is missing: name a release tarball of GNU libiconv")
file(WRITE "${WORK}/releases/text.tar.gz" "no tarball")
configure(-D "BRAMBLECOR_LIBICONV_TARBALL=${WORK}/releases/text.tar.gz")
expect_refusal("a text" "text.tar.gz is no release tarball of GNU libiconv: it does not hold one folder libiconv-VERSION")
configure(-D "BRAMBLECOR_GETTEXT_TARBALL=${tarball}" -D "BRAMBLECOR_LIBICONV_TARBALL=${tarball}")
expect_refusal("another project's release"
  "BRAMBLECOR_GETTEXT_TARBALL: ${tarball} is no release tarball of GNU gettext")
file(REMOVE_RECURSE "${WORK}/releases/libiconv-1.17/include")
file(RENAME "${WORK}/releases/libiconv-1.17" "${WORK}/releases/libiconv-1.98")
pack(libiconv-1.98 cut.tar.gz)
configure(-D "BRAMBLECOR_LIBICONV_TARBALL=${WORK}/releases/cut.tar.gz")
expect_refusal("a release that lacks a file" "cut.tar.gz cannot be used: libiconv-1.98/include/iconv.h.in is not in it")

# --- gettext: libintl is built by the release's own configure and make, for the libiconv of this build ---

set(release "${WORK}/releases/gettext-0.99")
file(WRITE "${release}/gettext-runtime/intl/libgnuintl.in.h" "")
file(WRITE "${release}/gettext-runtime/intl/COPYING.LIB" "")
file(WRITE "${release}/gettext-runtime/configure" [=[
#!/bin/sh
# Stands in for a release's own: takes the compiler and its options from the arguments.
for argument; do
  case $argument in
  CC=*) cc=${argument#CC=} ;;
  CPPFLAGS=*) cppflags=${argument#CPPFLAGS=} ;;
  CFLAGS=*) cflags=${argument#CFLAGS=} ;;
  esac
  printf '%s\n' "$argument" >>arguments
done
mkdir -p intl/.libs
cat >intl/Makefile <<END
all:
	printf '#include <iconv.h>\nvoid* gettext(void) { return iconv_open("a", "b"); }\n' >gettext.c
	$cc $cppflags $cflags -Werror -c gettext.c
	ar rc .libs/libintl.a gettext.o
END
]=])
file(CHMOD "${release}/gettext-runtime/configure" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
pack(gettext-0.99 gettext-0.99.tar.gz)
configure(-D "BRAMBLECOR_GETTEXT_TARBALL=${WORK}/releases/gettext-0.99.tar.gz" -D "BRAMBLECOR_LIBICONV_TARBALL=${tarball}"
  -D "BRAMBLECOR_AUTOPOINT_DIR=${WORK}/nowhere" -D CMAKE_BUILD_TYPE=Release)
expect_success("a release of gettext")
expect_words("a release of gettext" "gettext-0.99: from ${WORK}/releases/gettext-0.99.tar.gz, as it is")
build(libintl_release)
expect_success("building that release of gettext")
file(GLOB built "${build}/third-party/gettext-*/libintl-build")
file(READ "${built}/arguments" arguments)
foreach(argument IN ITEMS --with-included-gettext --disable-shared --with-pic am_cv_func_iconv=yes)
  if(NOT arguments MATCHES "${argument}\n")
    message(SEND_ERROR "a release of gettext: its configure is not told ${argument}: ${arguments}")
  endif()
endforeach()
if(NOT arguments MATCHES "CFLAGS=[^\n]*-O[0-9][^\n]*-fPIC")
  message(SEND_ERROR "a release of gettext: it is not compiled as the build type says: ${arguments}")
endif()
find_program(NM nm REQUIRED)
execute_process(COMMAND "${NM}" "${built}/intl/.libs/libintl.a" OUTPUT_VARIABLE symbols)
if(NOT symbols MATCHES " U libiconv_open")
  message(SEND_ERROR "a release of gettext: it does not convert with the libiconv of the build: ${symbols}")
endif()
# What is linked into the component asks for the functions by name, and comes behind the archive's making.
file(READ "${build}/build.ninja" ninja)
if(NOT ninja MATCHES "build stage/libBramblecorLanFax.so:[^\n]*third-party/gettext-[0-9a-f]*/libintl-build/intl/.libs/libintl.a" OR
   NOT ninja MATCHES "--undefined=bind_textdomain_codeset")
  message(SEND_ERROR "a release of gettext: the component is not linked with it")
endif()

file(REMOVE_RECURSE "${WORK}")
