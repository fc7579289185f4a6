# Lists the suites of a test program: run by ctest, when it starts, with what add_room_tests() set.
#
# A suite is one test of ctest, in a process of its own: starting a sanitized process takes longer than most tests
# do. How many tests each suite had stands in the folder test-results/ of the build.
# SPDX-License-Identifier: LGPL-2.1-or-later
cmake_policy(PUSH)
cmake_policy(SET CMP0057 NEW) # IN_LIST
function(add_suites)
  if(NOT EXISTS "${program}")
    add_test("${room}.not_built" "${program}")
    return()
  endif()
  execute_process(COMMAND "${program}" --gtest_list_tests OUTPUT_VARIABLE listing RESULT_VARIABLE status)
  # A suite stands at the begin of a line, its tests below it behind blanks.
  string(REGEX MATCHALL "(^|\n)[A-Za-z0-9_/]+\\.[^\n]*" suites "${listing}")
  if(NOT status EQUAL 0 OR NOT suites)
    add_test("${room}.no_suite_is_listed" "${CMAKE_COMMAND}" -E false)
  endif()
  foreach(line IN LISTS suites)
    string(REGEX REPLACE "^\n?([A-Za-z0-9_/]+)\\..*" "\\1" suite "${line}")
    # A suite with parameters bears their name ahead of its own.
    string(REGEX REPLACE ".*/" "" plain "${suite}")
    set(command "${program}")
    set(suite_label "${label}")
    set(cost 0)
    if(plain IN_LIST root)
      set(suite_label root)
    elseif(plain IN_LIST server)
      set(suite_label server)
    elseif(plain IN_LIST screen)
      set(suite_label screen)
      set(command "${with_display}" "${program}")
      # What waits for windows begins early, beside what keeps the processors busy.
      set(cost 10)
    endif()
    string(REPLACE "/" "-" result "${room}.${suite}.xml")
    add_test("${room}.${suite}" ${command} "--gtest_filter=${suite}.*" "--gtest_output=xml:${results}/${result}")
    set_tests_properties("${room}.${suite}" PROPERTIES LABELS "${suite_label}" TIMEOUT 300 COST ${cost})
  endforeach()
endfunction()
add_suites()
cmake_policy(POP)
