# Installs the build tree into a folder of its own, builds the consumer project against it, and runs it.
# SPDX-License-Identifier: LGPL-2.1-or-later
file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")
set(home "${WORK_DIR}/home")

# Runs a command; ends the test with its output when it fails.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command}: status ${status}\n${output}")
  endif()
endfunction()

function(expect_file path)
  if(NOT EXISTS "${prefix}/${path}")
    message(FATAL_ERROR "${path} is not installed")
  endif()
endfunction()

run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${prefix}" --config "${CONFIG}")
expect_file(lib/quelm/libBramblecorLanFax.so)
expect_file(include/bramblecor-lan-fax/host/component.h)
expect_file(include/bramblecor-lan-fax/model/fax_job.h)
expect_file(share/doc/BramblecorLanFax/COPYING.LIB)

# The package must serve from wherever the tree is moved to.
file(RENAME "${prefix}" "${WORK_DIR}/moved")
set(prefix "${WORK_DIR}/moved")

run("${CMAKE_COMMAND}" -S "${CONSUMER_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}"
  "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
  "-DCMAKE_BUILD_TYPE=${CONFIG}")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build" --config "${CONFIG}")

file(MAKE_DIRECTORY "${home}/db")
execute_process(COMMAND "${WORK_DIR}/build/consumer" "${home}"
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE complaints)
set(expected "Bramblecor Pro Family Lan Fax Library 0.1\nstarted: yes\nfax job: published, in DSC mode\n")
if(NOT status EQUAL 0 OR NOT output STREQUAL expected)
  message(FATAL_ERROR "the consumer ended with ${status} and said\n${output}${complaints}\ninstead of\n${expected}")
endif()
if(NOT EXISTS "${home}/db/phonebook/user/ann.xdb")
  message(FATAL_ERROR "the consumer's start-up made no personal phonebook")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
