# What the tests of build steps share: included by them, after `result` and `words` are those of a step that ran.
# SPDX-License-Identifier: LGPL-2.1-or-later

# Expects that the step stopped with these words, and left no `file` behind.
function(expect_refused what expected file)
  string(FIND "${words}" "${expected}" found)
  if(result EQUAL 0)
    message(SEND_ERROR "${what}: accepted")
  elseif(found EQUAL -1)
    message(SEND_ERROR "${what}: refused with other words: ${words}")
  endif()
  if(EXISTS "${file}")
    message(SEND_ERROR "${what}: left ${file} behind")
  endif()
endfunction()
