# What configuring says where libraries and programs are missing: all of it at once, and what to do.
# Run as: cmake -D PROJECT=root -D DOWNLOADS=folder-of-iconv-3.0.1.tgz -D WORK=folder-of-its-own -P this-file
# SPDX-License-Identifier: LGPL-2.1-or-later
cmake_minimum_required(VERSION 3.22)
include("${CMAKE_CURRENT_LIST_DIR}/configuring.cmake")
file(COPY "${pinned_archive}" DESTINATION "${downloads}")

# Everything is reported by one error, at its own place and without a trace of calls.
function(expect_one_error what)
  string(REGEX MATCHALL "CMake Error" errors "${words}")
  list(LENGTH errors count)
  if(NOT count EQUAL 1 OR words MATCHES "Call Stack")
    message(SEND_ERROR "${what}: this is not one plain error: ${words}")
  endif()
endfunction()

# --- Nothing that pkg-config finds, nor one package of CMake's ---

set(ENV{PKG_CONFIG_LIBDIR} "${WORK}/nowhere")
unset(ENV{PKG_CONFIG_PATH})
configure(-D BRAMBLECOR_DRIVER=ON -D CMAKE_DISABLE_FIND_PACKAGE_pugixml=ON)
expect_refusal("no library" "This is missing, or older than the build needs:")
expect_one_error("no library")
expect_words("no library" "pugixml: reads the dialog definition Debian, Ubuntu: libpugixml-dev; Fedora: pugixml-devel")
expect_words("no library" "ldap, lber: looks into the device's directory Debian, Ubuntu: libldap-dev; Fedora: openldap-devel")
expect_words("no library" "gtkmm-3.0: the desktop's windows")
expect_words("no library" "-D BRAMBLECOR_DRIVER=OFF builds the component alone")
if(NOT words MATCHES "apt-get install [a-z0-9. +-]*libpugixml-dev [a-z0-9. +-]*libldap-dev [a-z0-9. +-]*libgtkmm-3.0-dev")
  message(SEND_ERROR "no library: the command for Debian does not install them all: ${words}")
endif()
if(NOT words MATCHES "dnf install [a-z0-9. +-]*pugixml-devel [a-z0-9. +-]*openldap-devel [a-z0-9. +-]*gtkmm3.0-devel")
  message(SEND_ERROR "no library: the command for Fedora does not install them all: ${words}")
endif()
if(words MATCHES "Not looked for")
  message(SEND_ERROR "no library: says that some were not looked for: ${words}")
endif()

configure(-D BRAMBLECOR_DRIVER=OFF)
expect_success("the component alone, without libraries")

# A library that is too old is none: here all that pkg-config finds is the first release of each.
set(ENV{PKG_CONFIG_LIBDIR} "${WORK}/old")
foreach(module IN ITEMS libtiff-4 cairo)
  file(WRITE "${WORK}/old/${module}.pc" "Name: ${module}\nDescription: an early release\nVersion: 1.0\n")
endforeach()
configure(-D BRAMBLECOR_DRIVER=ON)
expect_refusal("old libraries" "libtiff-4>=4.5: the pages that the device sends and receives")
if(words MATCHES " cairo: ")
  message(SEND_ERROR "old libraries: one that serves is said to be missing: ${words}")
endif()
expect_words("old libraries" "-D BRAMBLECOR_DEVICE=OFF leaves the emulated device out.")
configure(-D BRAMBLECOR_DRIVER=ON -D BRAMBLECOR_DEVICE=OFF)
if(words MATCHES "libtiff-4")
  message(SEND_ERROR "without the device: what it needs is said to be missing: ${words}")
endif()
unset(ENV{PKG_CONFIG_LIBDIR})
configure(-D BRAMBLECOR_DRIVER=ON -D BRAMBLECOR_DEVICE=OFF)
expect_success("the driver without the device")
configure(-D BRAMBLECOR_DRIVER=ON -D BRAMBLECOR_DEVICE=OFF -D BUILD_TESTING=ON)
expect_refusal("tests without the device" "The driver's tests and benchmarks need the emulated device")

# --- Without pkg-config nothing is said to be missing that was not looked for ---

unset(ENV{PKG_CONFIG_LIBDIR})
configure(-D BRAMBLECOR_DRIVER=ON -D CMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON)
expect_refusal("no pkg-config" "pkg-config: finds libraries Debian, Ubuntu: pkg-config; Fedora: pkgconf-pkg-config")
expect_one_error("no pkg-config")
expect_words("no pkg-config" "Not looked for without pkg-config: glib-2.0, libebook-contacts-1.2, ldap, lber")
if(words MATCHES "ldap, lber: looks")
  message(SEND_ERROR "no pkg-config: a library that was not looked for is said to be missing: ${words}")
endif()

# --- The sources of libintl and libiconv are part of the same list ---

file(REMOVE "${archive}")
configure(-D BRAMBLECOR_DRIVER=ON -D CMAKE_DISABLE_FIND_PACKAGE_pugixml=ON
  -D "BRAMBLECOR_AUTOPOINT_DIR=${WORK}/nowhere")
expect_one_error("libraries and sources")
expect_refusal("libraries and sources" "pugixml: reads the dialog definition")
expect_words("libraries and sources" "there is no archive.dir.tar.xz or .tar.gz in ${WORK}/nowhere; install the package \
autopoint (Fedora: gettext-devel), or name a release tarball of GNU gettext with -D BRAMBLECOR_GETTEXT_TARBALL=FILE.")
expect_words("libraries and sources" "libiconv's source is not at hand: ${archive} is missing;")
expect_no_fetching("libraries and sources")

# --- What is named there is what the other lists have ---

file(STRINGS "${PROJECT}/cmake/Requirements.cmake" requirements)
file(READ "${PROJECT}/tools/packages" packages)
file(READ "${PROJECT}/docs/building.md" building)
set(count 0)
foreach(line IN LISTS requirements)
  if(NOT line MATCHES "^[^#]*DEBIAN \"?([a-z0-9.+ -]+)\"? FEDORA \"?([a-z0-9.+ -]+)\"?\\)")
    continue()
  endif()
  math(EXPR count "${count} + 1")
  string(REPLACE " " ";" debian "${CMAKE_MATCH_1}")
  string(REPLACE " " ";" fedora "${CMAKE_MATCH_2}")
  foreach(package IN LISTS debian)
    if(NOT "\n${packages}" MATCHES "\n${package} ")
      message(SEND_ERROR "tools/packages does not install ${package}")
    endif()
  endforeach()
  foreach(package IN LISTS fedora)
    if(NOT building MATCHES "`${package}`")
      message(SEND_ERROR "docs/building.md does not name ${package}")
    endif()
  endforeach()
endforeach()
if(count LESS 20)
  message(SEND_ERROR "only ${count} requirements were found")
endif()

file(REMOVE_RECURSE "${WORK}")
