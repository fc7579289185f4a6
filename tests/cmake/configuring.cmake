# Configures the project far from any network: what the tests of its switches and requirements share.
# They set PROJECT, the root, DOWNLOADS, the folder of iconv-3.0.1.tgz, and WORK, a folder of their own.
#
# In place of npm stands a program that leaves its arguments in the file `fetched` and then fails, or, where the file
# `archive` stands beside it, hands that out as what it fetched.
# SPDX-License-Identifier: LGPL-2.1-or-later
set(npm "${WORK}/bin/npm")
set(fetched "${WORK}/bin/fetched")
set(downloads "${WORK}/downloads")
set(archive "${downloads}/iconv-3.0.1.tgz")
set(build "${WORK}/build")

file(REMOVE_RECURSE "${WORK}")
file(WRITE "${npm}" "#!/bin/sh
here=$(dirname \"$0\")
echo \"$*\" >\"$here/fetched\"
if [ -e \"$here/archive\" ]; then exec cp \"$here/archive\" iconv-3.0.1.tgz; fi
echo 'npm has no network here' >&2
exit 1
")
file(CHMOD "${npm}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(pinned_archive "${DOWNLOADS}/iconv-3.0.1.tgz")
if(NOT EXISTS "${pinned_archive}")
  message(FATAL_ERROR "${pinned_archive} is missing, which this test builds with: run tools/fetch-libiconv ${DOWNLOADS}")
endif()

# Configures anew with these switches; leaves the exit status in `result`, the words in one line in `words`.
function(configure)
  file(REMOVE_RECURSE "${build}")
  file(REMOVE "${fetched}")
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env "PATH=${WORK}/bin:$ENV{PATH}"
            "${CMAKE_COMMAND}" -G Ninja -S "${PROJECT}" -B "${build}" -D BRAMBLECOR_DRIVER=OFF -D BUILD_TESTING=OFF
            -D "BRAMBLECOR_DOWNLOAD_DIR=${downloads}" ${ARGV}
    RESULT_VARIABLE result OUTPUT_VARIABLE words ERROR_VARIABLE words)
  string(REGEX REPLACE "[ \n]+" " " words "${words}")
  set(result "${result}" PARENT_SCOPE)
  set(words "${words}" PARENT_SCOPE)
endfunction()

function(expect_success what)
  if(NOT result EQUAL 0)
    message(SEND_ERROR "${what}: refused: ${words}")
  endif()
endfunction()

function(expect_refusal what expected)
  string(FIND "${words}" "${expected}" found)
  if(result EQUAL 0)
    message(SEND_ERROR "${what}: accepted: ${words}")
  elseif(found EQUAL -1)
    message(SEND_ERROR "${what}: refused with other words: ${words}")
  endif()
endfunction()

function(expect_words what expected)
  string(FIND "${words}" "${expected}" found)
  if(found EQUAL -1)
    message(SEND_ERROR "${what}: is not said: ${expected} - but this is: ${words}")
  endif()
endfunction()

function(expect_fetching what)
  if(NOT EXISTS "${fetched}")
    message(SEND_ERROR "${what}: nothing was fetched")
  endif()
endfunction()

function(expect_no_fetching what)
  if(EXISTS "${fetched}")
    file(READ "${fetched}" arguments)
    message(SEND_ERROR "${what}: this was fetched: ${arguments}")
  endif()
endfunction()
