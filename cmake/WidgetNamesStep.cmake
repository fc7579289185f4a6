# The build step behind add_widget_names: reads a dialog definition and writes a header with a constant for each name.
# Run as: cmake -D SOURCE=... -D OUTPUT=... -D NAMESPACE=... -P this-file
#
# A constant is called as its widget, in lowerCamelCase: a name is cut into words at everything that is no letter and
# no digit, and where a capital follows a small letter or a digit or begins a word behind capitals; all but the first
# word begin with a capital, and all else is small. "LanFax OK Button" is lanFaxOkButton, "LDAP ZipCode" ldapZipCode.
# What would begin with a digit, or be a word of C++, begins with "name": "14.4" is name144. Two names that would be
# one constant stop the build. A name that several widgets bear is one constant.
# SPDX-License-Identifier: LGPL-2.1-or-later
cmake_minimum_required(VERSION 3.22)

# Stops the build. The leading blanks keep CMake from wrapping the words.
function(refuse)
  string(JOIN "" words ${ARGV})
  message(FATAL_ERROR "  ${SOURCE} ${words}")
endfunction()

set(words_of_the_language
  alignas alignof and and_eq asm auto bitand bitor bool break case catch char class compl concept const continue decltype
  default delete do double else enum explicit export extern false float for friend goto if inline int long mutable
  namespace new noexcept not not_eq nullptr operator or or_eq private protected public register requires return short
  signed sizeof static struct switch template this throw true try typedef typeid typename union unsigned using virtual
  void volatile while xor xor_eq)

function(capitalise word_variable)
  string(SUBSTRING "${${word_variable}}" 0 1 first)
  string(SUBSTRING "${${word_variable}}" 1 -1 rest)
  string(TOUPPER "${first}" first)
  set(${word_variable} "${first}${rest}" PARENT_SCOPE)
endfunction()

function(identifier_of name result)
  string(REGEX REPLACE "([a-z0-9])([A-Z])" "\\1 \\2" words "${name}")
  string(REGEX REPLACE "([A-Z])([A-Z][a-z])" "\\1 \\2" words "${words}")
  string(TOLOWER "${words}" words)
  string(REGEX MATCHALL "[a-z0-9]+" words "${words}")
  set(identifier "")
  foreach(word IN LISTS words)
    if(NOT identifier STREQUAL "")
      capitalise(word)
    endif()
    string(APPEND identifier "${word}")
  endforeach()
  if(identifier MATCHES "^[0-9]")
    set(identifier "name${identifier}")
  elseif(identifier IN_LIST words_of_the_language)
    capitalise(identifier)
    set(identifier "name${identifier}")
  endif()
  set(${result} "${identifier}" PARENT_SCOPE)
endfunction()

file(READ "${SOURCE}" text)
# What means something in CMake's lists is in no name; it must not tear one apart before it can be refused.
string(REGEX REPLACE "[][;\\]" "?" text "${text}")
string(REGEX REPLACE "<!--([^-]|-[^-])*-->" " " text "${text}")
string(REGEX MATCHALL "[ \t\r\n]Name[ \t\r\n]*=[ \t\r\n]*(\"[^\"]*\"|'[^']*')" attributes "${text}")

set(lines "")
set(names "")
foreach(attribute IN LISTS attributes)
  string(REGEX REPLACE "^[^\"']*.(.*).$" "\\1" name "${attribute}")
  if(NOT name MATCHES "^[A-Za-z0-9 ._/-]*[A-Za-z0-9][A-Za-z0-9 ._/-]*$")
    refuse("has a widget \"${name}\": letters, digits, blanks and the characters ._/- make a name.")
  endif()
  if(name IN_LIST names)
    continue()
  endif()
  identifier_of("${name}" identifier)
  if(DEFINED name_of_${identifier})
    refuse("has the widgets \"${name_of_${identifier}}\" and \"${name}\", and ${identifier} would stand for both: "
           "change one of these names.")
  endif()
  set(name_of_${identifier} "${name}")
  list(APPEND names "${name}")
  string(APPEND lines "inline constexpr char ${identifier}[] = \"${name}\";\n")
endforeach()
if(lines STREQUAL "")
  refuse("has no widget with a Name.")
endif()

string(REPLACE "::" "_" guard "${NAMESPACE}_H")
string(TOUPPER "${guard}" guard)
cmake_path(GET SOURCE FILENAME file_name)
set(header "// The names of the widgets. Made from ${file_name} by the build; change that file instead.
#ifndef ${guard}
#define ${guard}

namespace ${NAMESPACE} {

${lines}
} // namespace ${NAMESPACE}

#endif
")
# A header that stays as it was is no reason to compile anything anew.
set(before "")
if(EXISTS "${OUTPUT}")
  file(READ "${OUTPUT}" before)
endif()
if(NOT header STREQUAL before)
  file(WRITE "${OUTPUT}" "${header}")
endif()
