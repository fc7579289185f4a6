# The step that names the widgets: which constants it makes of a definition, and which definitions stop the build.
# Run as: cmake -D STEP=cmake/WidgetNamesStep.cmake -D WORK=folder-of-its-own -P this-file
# SPDX-License-Identifier: LGPL-2.1-or-later
cmake_minimum_required(VERSION 3.22)
include("${CMAKE_CURRENT_LIST_DIR}/refusal.cmake")

# Runs the step on `content`; leaves its exit status in `result`, its words in `words`.
function(name_widgets content)
  file(WRITE "${WORK}/dialogs.xml" "${content}")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -D "SOURCE=${WORK}/dialogs.xml" -D "OUTPUT=${WORK}/names.h" -D NAMESPACE=some::names
            -P "${STEP}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE words)
  set(result "${result}" PARENT_SCOPE)
  set(words "${words}" PARENT_SCOPE)
endfunction()

function(expect_header what constants)
  if(NOT result EQUAL 0)
    message(SEND_ERROR "${what}: refused: ${words}")
    return()
  endif()
  file(READ "${WORK}/names.h" made)
  set(expected "// The names of the widgets. Made from dialogs.xml by the build; change that file instead.
#ifndef SOME_NAMES_H
#define SOME_NAMES_H

namespace some::names {

${constants}
} // namespace some::names

#endif
")
  if(NOT made STREQUAL expected)
    message(SEND_ERROR "${what}: made this: ${made}")
  endif()
endfunction()

# Expects that one widget of that name has that constant.
function(expect_constant name identifier)
  file(REMOVE_RECURSE "${WORK}")
  name_widgets("<R><W Name=\"${name}\"/></R>")
  expect_header("the name ${name}" "inline constexpr char ${identifier}[] = \"${name}\";\n")
endfunction()

function(expect_refusal what content expected)
  file(REMOVE_RECURSE "${WORK}")
  name_widgets("${content}")
  expect_refused("${what}" "${expected}" "${WORK}/names.h")
endfunction()

expect_constant("Lan Fax TabSet" lanFaxTabSet)
expect_constant("LanFax OK Button" lanFaxOkButton)
expect_constant("LanFaxRcptPB OK Button" lanFaxRcptPbOkButton)
expect_constant("LDAPStatus" ldapStatus)
expect_constant("Add Button2" addButton2)
expect_constant("A4" a4)
expect_constant("name" name)
expect_constant("Super G3" superG3)
expect_constant("4800" name4800)
expect_constant("14.4" name144)
expect_constant("Default" nameDefault)

# Every name of the definition in its order: items among them, whatever the layout, and what is shared once. What
# stands in a comment, or in an attribute that only ends in these letters, is none.
set(document [=[
<!-- Name="Not This" - nor -->
<R Version="0.1">
  <Combo
      Name="Speed" LoginName="None">
    <Item Name = "Fast" Text="a;b [c] Name"/> <!-- <W Name="Nor This"/> -->
    <Item	Name="Slow"/><Item Name='Slowest'/>
  </Combo>
  <Label Name="Slow" FileName="none.gif"/>
</R>
]=])
file(REMOVE_RECURSE "${WORK}")
name_widgets("${document}")
set(constants "inline constexpr char speed[] = \"Speed\";
inline constexpr char fast[] = \"Fast\";
inline constexpr char slow[] = \"Slow\";
inline constexpr char slowest[] = \"Slowest\";
")
expect_header("a document" "${constants}")

# A header that says the same is not written again, so that nothing is compiled again.
file(TOUCH "${WORK}/marker")
execute_process(COMMAND touch -d "2001-01-01" "${WORK}/names.h")
name_widgets("<!-- another layout -->${document}")
expect_header("another layout" "${constants}")
if("${WORK}/names.h" IS_NEWER_THAN "${WORK}/marker")
  message(SEND_ERROR "another layout: wrote the header again")
endif()
name_widgets("<R><W Name=\"Other\"/></R>")
expect_header("another name" "inline constexpr char other[] = \"Other\";\n")

expect_refusal("two names of one constant" "<R><W Name=\"Add Button\"/><W Name=\"AddButton\"/></R>"
  "dialogs.xml has the widgets \"Add Button\" and \"AddButton\", and addButton would stand for both: change one of")
expect_refusal("a name that is put ahead of a digit" "<R><W Name=\"Name 14\"/><W Name=\"1.4\"/></R>"
  "\"Name 14\" and \"1.4\", and name14 would stand for both")
expect_refusal("a name with an entity" "<R><W Name=\"Fast &amp; Slow\"/></R>" "has a widget \"Fast &amp")
expect_refusal("a name with a semicolon" "<R><W Name=\"Fast;Slow\"/></R>" "letters, digits, blanks and")
expect_refusal("a name with a backslash" "<R><W Name=\"Fast\\Slow\"/></R>" "letters, digits, blanks and")
expect_refusal("an empty name" "<R><W Name=\"\"/></R>" "has a widget \"\"")
expect_refusal("a document without names" "<R/>" "has no widget with a Name")

file(REMOVE_RECURSE "${WORK}")
