# What the build needs of the system: each library and program is looked for here, and nowhere else.
#
# What a room links bears the name that it has below: pugixml::pugixml, PkgConfig::LDAP. All that is missing is told at
# once, in `missing_requirements`, with what it is for and the packages that have it; nothing when nothing is missing.
# Libraries are found by their CMake package or by pkg-config, so that no folder of one distribution stands here.
# SPDX-License-Identifier: LGPL-2.1-or-later
include_guard(GLOBAL)

set(missing_requirements "")
set(missing_names "")
set(missing_lines "")
set(missing_debian "")
set(missing_fedora "")

# Notes what is missing: its name, what it is for, and its package on Debian and Ubuntu and on Fedora.
macro(note_missing name purpose debian fedora)
  if(NOT "${name}" IN_LIST missing_names)
    list(APPEND missing_names "${name}")
    string(APPEND missing_lines "    ${name}: ${purpose}\n      Debian, Ubuntu: ${debian}; Fedora: ${fedora}\n")
    list(APPEND missing_debian "${debian}")
    list(APPEND missing_fedora "${fedora}")
  endif()
endmacro()

# A library by its CMake package, whose target exists afterwards:
#   need_package(pugixml TARGET pugixml::pugixml FOR "reads the dialog definition" DEBIAN libpugixml-dev FEDORA pugixml-devel)
macro(need_package package)
  cmake_parse_arguments(need "" "TARGET;FOR;DEBIAN;FEDORA" "" ${ARGN})
  if(NOT TARGET "${need_TARGET}")
    find_package(${package} QUIET)
  endif()
  if(NOT TARGET "${need_TARGET}")
    note_missing("${package}" "${need_FOR}" "${need_DEBIAN}" "${need_FEDORA}")
  endif()
endmacro()

# Takes "-pthread" from how a library's users are compiled: the C library no longer needs it, pkg-config names it for
# other libraries on each system, and a precompiled header serves only sources that are compiled as it was.
function(compile_without_pthread library)
  get_target_property(options ${library} INTERFACE_COMPILE_OPTIONS)
  if(options)
    list(REMOVE_ITEM options -pthread)
    set_target_properties(${library} PROPERTIES INTERFACE_COMPILE_OPTIONS "${options}")
  endif()
endfunction()

# Libraries by their names for pkg-config, with the least version where it matters, together the target PkgConfig::NAME:
#   need_modules(LDAP MODULES ldap lber FOR "looks into the device's directory" DEBIAN libldap-dev FEDORA openldap-devel)
macro(need_modules name)
  cmake_parse_arguments(need "" "FOR;DEBIAN;FEDORA" "MODULES" ${ARGN})
  if(PKG_CONFIG_FOUND)
    pkg_check_modules(${name} QUIET IMPORTED_TARGET ${need_MODULES})
    if(NOT ${name}_FOUND)
      list(JOIN need_MODULES ", " need_modules_text)
      note_missing("${need_modules_text}" "${need_FOR}" "${need_DEBIAN}" "${need_FEDORA}")
    endif()
    if(TARGET PkgConfig::${name})
      compile_without_pthread(PkgConfig::${name})
    endif()
  else()
    list(APPEND modules_not_looked_for ${need_MODULES})
  endif()
endmacro()

# A program, whose path is in the variable afterwards:
#   need_program(MSGFMT msgfmt FOR "compiles the message catalogues" DEBIAN gettext FEDORA gettext)
macro(need_program variable program)
  cmake_parse_arguments(need "" "FOR;DEBIAN;FEDORA" "" ${ARGN})
  find_program(${variable} ${program})
  if(NOT ${variable})
    note_missing("${program}" "${need_FOR}" "${need_DEBIAN}" "${need_FEDORA}")
  endif()
endmacro()

# A library that neither CMake nor pkg-config knows: its header's folder is in NAME_INCLUDE_DIR, it in NAME_LIBRARY.
# Without LIBRARY it is a header alone.
macro(need_header name header)
  cmake_parse_arguments(need "" "LIBRARY;FOR;DEBIAN;FEDORA" "" ${ARGN})
  find_path(${name}_INCLUDE_DIR ${header})
  if(need_LIBRARY)
    find_library(${name}_LIBRARY ${need_LIBRARY})
  endif()
  if(NOT ${name}_INCLUDE_DIR OR (need_LIBRARY AND NOT ${name}_LIBRARY))
    note_missing("${header}" "${need_FOR}" "${need_DEBIAN}" "${need_FEDORA}")
  endif()
endmacro()

# --- The compiler --------------------------------------------------------------------------

if((CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 11) OR
   (CMAKE_CXX_COMPILER_ID STREQUAL Clang AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 14))
  note_missing("a newer compiler than ${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION}"
    "compiles C++20: g++ 11, or clang 14" g++ gcc-c++)
endif()

# --- The driver and the device -------------------------------------------------------------

set(modules_not_looked_for "")
if(BRAMBLECOR_DRIVER)
  find_package(PkgConfig QUIET)
  if(NOT PKG_CONFIG_FOUND)
    note_missing(pkg-config "finds libraries" pkg-config pkgconf-pkg-config)
  endif()
  find_package(Threads REQUIRED)
  need_package(fmt TARGET fmt::fmt FOR "fills the places of translated texts" DEBIAN libfmt-dev FEDORA fmt-devel)
  need_modules(GLIB2 MODULES glib-2.0 FOR "keeps the user's settings" DEBIAN libglib2.0-dev FEDORA glib2-devel)
  need_package(CLI11 TARGET CLI11::CLI11 FOR "reads the command line" DEBIAN libcli11-dev FEDORA cli11-devel)
  need_package(nlohmann_json TARGET nlohmann_json::nlohmann_json FOR "writes summaries and lists of jobs as JSON"
    DEBIAN nlohmann-json3-dev FEDORA json-devel)
  need_package(SQLite3 TARGET SQLite::SQLite3 FOR "keeps the phonebooks" DEBIAN libsqlite3-dev FEDORA sqlite-devel)
  need_package(pugixml TARGET pugixml::pugixml FOR "reads the dialog definition"
    DEBIAN libpugixml-dev FEDORA pugixml-devel)
  need_package(Cups TARGET Cups::Cups FOR "hands jobs to print queues" DEBIAN libcups2-dev FEDORA cups-devel)
  need_header(LIBCSV csv.h LIBRARY csv FOR "reads and writes CSV files" DEBIAN libcsv-dev FEDORA libcsv-devel)
  need_modules(EBOOK_CONTACTS MODULES libebook-contacts-1.2 FOR "reads and writes vCards"
    DEBIAN libebook-contacts1.2-dev FEDORA evolution-data-server-devel)
  need_modules(LDAP MODULES ldap lber FOR "looks into the device's directory" DEBIAN libldap-dev FEDORA openldap-devel)
  need_modules(NETSNMP MODULES netsnmp FOR "asks the device, and answers in its place"
    DEBIAN libsnmp-dev FEDORA net-snmp-devel)
  need_modules(PANGOCAIRO MODULES pangocairo pangoft2 fontconfig FOR "draws the cover page in every script"
    DEBIAN libpango1.0-dev FEDORA pango-devel)
  need_modules(UCHARDET MODULES uchardet FOR "guesses the charset of contacts of other programs"
    DEBIAN libuchardet-dev FEDORA uchardet-devel)
  need_modules(GTKMM MODULES gtkmm-3.0 FOR "the desktop's windows" DEBIAN libgtkmm-3.0-dev FEDORA gtkmm3.0-devel)

  if(BRAMBLECOR_DEVICE)
    need_modules(PANGOCAIRO_SHEET MODULES pangocairo pangoft2 fontconfig cairo-pdf FOR "draws confirmation sheets"
      DEBIAN libpango1.0-dev FEDORA pango-devel)
    need_modules(CAIRO MODULES cairo FOR "draws pictures of pages" DEBIAN libcairo2-dev FEDORA cairo-devel)
    need_modules(SPANDSP MODULES spandsp FOR "the device's fax modems" DEBIAN libspandsp-dev FEDORA spandsp-devel)
    need_modules(TIFF MODULES libtiff-4>=4.5 FOR "the pages that the device sends and receives"
      DEBIAN libtiff-dev FEDORA libtiff-devel)
    # Not what pkg-config says of the agent: that is also the objects of a computer, which a device does not have.
    find_library(NETSNMP_AGENT_LIBRARY netsnmpagent)
    if(NOT NETSNMP_AGENT_LIBRARY)
      note_missing(netsnmpagent "answers in the device's place" libsnmp-dev net-snmp-devel)
    endif()
    # Where the library is one header, no file for pkg-config comes with it.
    if(PKG_CONFIG_FOUND)
      pkg_check_modules(CPP_HTTPLIB QUIET IMPORTED_TARGET cpp-httplib>=0.11)
      if(TARGET PkgConfig::CPP_HTTPLIB)
        compile_without_pthread(PkgConfig::CPP_HTTPLIB)
      endif()
    endif()
    if(CPP_HTTPLIB_FOUND)
      set(HTTPLIB_TARGET PkgConfig::CPP_HTTPLIB)
    else()
      set(HTTPLIB_TARGET httplib::httplib)
      find_package(httplib QUIET)
      if(TARGET httplib::httplib AND NOT httplib_VERSION VERSION_LESS 0.11)
        message(STATUS "cpp-httplib ${httplib_VERSION}: by its CMake package")
      elseif(NOT PKG_CONFIG_FOUND)
        list(APPEND modules_not_looked_for cpp-httplib)
      else()
        note_missing("cpp-httplib>=0.11" "the device's status pages" libcpp-httplib-dev cpp-httplib-devel)
      endif()
    endif()
  endif()

  need_program(XGETTEXT xgettext FOR "extracts the texts for translation" DEBIAN gettext FEDORA gettext)
  need_program(MSGFMT msgfmt FOR "compiles the message catalogues" DEBIAN gettext FEDORA gettext)
  find_program(GHOSTSCRIPT gs)
  if(NOT GHOSTSCRIPT)
    message(STATUS "Ghostscript is not installed: the programs need it when they send PDF files and draw pages")
  endif()
endif()

# --- Tests and benchmarks ------------------------------------------------------------------

if(BUILD_TESTING)
  # For 32-bit hosts, where no library is installed, the test framework is built from its sources.
  set(BRAMBLECOR_GOOGLETEST_DIR "/usr/src/googletest" CACHE PATH
      "The folder of GoogleTest's sources, for the tests of 32-bit hosts")
  if(NOT CMAKE_SIZEOF_VOID_P EQUAL 4)
    need_package(GTest TARGET GTest::gmock FOR "the test framework, with its matchers"
      DEBIAN "libgtest-dev libgmock-dev" FEDORA "gtest-devel gmock-devel")
    need_program(GHOSTSCRIPT_PROGRAM gs FOR "prints the cover page in tests" DEBIAN ghostscript FEDORA ghostscript)
  elseif(NOT EXISTS "${BRAMBLECOR_GOOGLETEST_DIR}/CMakeLists.txt")
    note_missing(GoogleTest "tests of 32-bit hosts are built with its sources in ${BRAMBLECOR_GOOGLETEST_DIR}"
      googletest gtest-devel)
  endif()
  need_header(RAPIDXML rapidxml/rapidxml.hpp FOR "reads the dialog definition in tests"
    DEBIAN librapidxml-dev FEDORA rapidxml-devel)
  if(NOT BRAMBLECOR_SANITIZERS)
    need_program(MSGFMT_PROGRAM msgfmt FOR "compiles message catalogues" DEBIAN gettext FEDORA gettext)
    need_program(MSGCONV_PROGRAM msgconv FOR "converts the catalogues of tests" DEBIAN gettext FEDORA gettext)
  endif()
endif()
if(BRAMBLECOR_BENCHMARKS)
  need_package(benchmark TARGET benchmark::benchmark FOR "the benchmarks' framework"
    DEBIAN libbenchmark-dev FEDORA google-benchmark-devel)
endif()

# --- libintl and libiconv ------------------------------------------------------------------

include("${CMAKE_CURRENT_LIST_DIR}/MessageCatalogueSources.cmake")

# --- What is missing -----------------------------------------------------------------------

# The leading blanks keep CMake from wrapping the words.
if(missing_names)
  list(REMOVE_DUPLICATES missing_debian)
  list(REMOVE_DUPLICATES missing_fedora)
  list(JOIN missing_debian " " missing_debian)
  list(JOIN missing_fedora " " missing_fedora)
  string(APPEND missing_requirements "  This is missing, or older than the build needs:\n${missing_lines}")
  if(modules_not_looked_for)
    list(REMOVE_DUPLICATES modules_not_looked_for)
    list(JOIN modules_not_looked_for ", " modules_not_looked_for)
    string(APPEND missing_requirements "  Not looked for without pkg-config: ${modules_not_looked_for}\n")
  endif()
  string(APPEND missing_requirements "  On Debian and Ubuntu, as root:\n    apt-get install ${missing_debian}\n"
    "  On Fedora, as root:\n    dnf install ${missing_fedora}\n")
endif()
if(catalogue_problems)
  string(APPEND missing_requirements "${catalogue_problems}")
endif()
if(missing_names AND BRAMBLECOR_DRIVER)
  string(APPEND missing_requirements
    "  -D BRAMBLECOR_DRIVER=OFF builds the component alone, which needs none of the libraries.\n")
endif()
if(missing_names AND BRAMBLECOR_DRIVER AND BRAMBLECOR_DEVICE AND NOT BUILD_TESTING)
  string(APPEND missing_requirements "  -D BRAMBLECOR_DEVICE=OFF leaves the emulated device out.\n")
endif()
if(missing_names AND BUILD_TESTING)
  string(APPEND missing_requirements "  -D BUILD_TESTING=OFF leaves the tests out.\n")
endif()
if(BRAMBLECOR_DRIVER AND NOT BRAMBLECOR_DEVICE AND (BUILD_TESTING OR BRAMBLECOR_BENCHMARKS))
  string(APPEND missing_requirements "  The driver's tests and benchmarks need the emulated device: configure with \
-D BUILD_TESTING=OFF -D BRAMBLECOR_BENCHMARKS=OFF, or with -D BRAMBLECOR_DEVICE=ON.\n")
endif()
