# The embedding step: what it makes of a text, and which texts stop the build, with which words.
# Run as: cmake -D STEP=cmake/EmbedTextStep.cmake -D WORK=folder-of-its-own -P this-file
# SPDX-License-Identifier: LGPL-2.1-or-later
cmake_minimum_required(VERSION 3.22)
include("${CMAKE_CURRENT_LIST_DIR}/refusal.cmake")

# Runs the step on `content`; leaves its exit status in `result`, its words in `words`.
function(embed content size xml)
  file(REMOVE_RECURSE "${WORK}")
  file(WRITE "${WORK}/text.in" "${content}")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -D "SOURCE=${WORK}/text.in" -D "OUTPUT=${WORK}/text.cpp" -D SYMBOL=someText
            -D HEADER=some/text.h -D "SIZE=${size}" -D "XML=${xml}" -P "${STEP}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE words)
  set(result "${result}" PARENT_SCOPE)
  set(words "${words}" PARENT_SCOPE)
endfunction()

function(expect_text what expected)
  if(NOT result EQUAL 0)
    message(SEND_ERROR "${what}: refused: ${words}")
    return()
  endif()
  file(READ "${WORK}/text.cpp" made)
  string(FIND "${made}" "const char someText[] = R\"text(${expected})text\";\n" found)
  if(found EQUAL -1)
    message(SEND_ERROR "${what}: made this: ${made}")
  endif()
endfunction()

function(expect_refusal what expected)
  expect_refused("${what}" "${expected}" "${WORK}/text.cpp")
endfunction()

# Byte for byte
set(plain "\n%%s; [a b] \\ \"q\" \${x}\n")
string(LENGTH "${plain}" plain_size)
embed("${plain}" ${plain_size} OFF)
expect_text("a plain text" "${plain}")

embed("twelve bytes" 11 OFF)
expect_refusal("a text one byte too long"
  "makes a text of 12 bytes, but hosts rely on 11: 1 too many.\n    Shorten a comment by as many.")
embed("twelve bytes" 15 OFF)
expect_refusal("a text three bytes too short"
  "makes a text of 12 bytes, but hosts rely on 15: 3 too few.\n    Lengthen a comment by as many.")
embed("café" 5 OFF)
expect_refusal("a text beyond ASCII" "holds the byte 0xc3")
embed("a\tb" 3 OFF)
expect_refusal("a text with a tabulator" "holds the byte 0x09")
embed("a)text\"b" 8 OFF)
expect_refusal("a text that ends its own literal" "holds the characters )text\"")

# As one line
set(document [[
<!-- Of two
     lines -->
<R V="0.1">

  <!-- dropped --> <A T="x &#10; y  >>"
      U="1"/>
  <!-- blanks: 3 -->
</R>
]])
embed("${document}" 49 ON)
expect_text("a document" "<R V=\"0.1\"> <A T=\"x &#10; y  >>\" U=\"1\"/>     </R>")
embed("${document}" 47 ON)
expect_refusal("a document two bytes too long"
  "2 too many.\n    Change its comment <!-- blanks: 3 --> to <!-- blanks: 1 -->.")
embed("${document}" 60 ON)
expect_refusal("a document eleven bytes too short"
  "11 too few.\n    Change its comment <!-- blanks: 3 --> to <!-- blanks: 14 -->.")
embed("${document}" 45 ON)
expect_refusal("a document whose blanks do not suffice" "Its \"blanks\" comment (now 3) has too few left")
embed("<R>\n</R>\n" 8 ON)
expect_refusal("a document without a blanks comment" "lacks the comment <!-- blanks: 0 -->")
embed("<R>\n<!-- blanks: 1 -->\n<!-- blanks: 2 -->\n</R>\n" 13 ON)
expect_refusal("a document with two blanks comments" "more than one \"blanks\" comment")
embed("<R> <!-- blanks: 1 --> <!-- </R>" 8 ON)
expect_refusal("a document with an open comment" "has a comment that does not end")

file(REMOVE_RECURSE "${WORK}")
