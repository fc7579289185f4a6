# Installs the build tree into a folder of its own, moves it, and uses the programs as its users would.
# SPDX-License-Identifier: LGPL-2.1-or-later
file(REMOVE_RECURSE "${WORK_DIR}")
set(ENV{HOME} "${WORK_DIR}/ann")
set(ENV{XDG_CONFIG_HOME} "${WORK_DIR}/ann/settings")
unset(ENV{XDG_DATA_HOME})
set(ENV{LC_ALL} C.UTF-8)
unset(ENV{DESTDIR})
file(MAKE_DIRECTORY "$ENV{HOME}")

# Runs a command; ends the test with its output when it fails. What it wrote is in `output`.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command}: status ${status}\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect what value expected)
  if(NOT value STREQUAL expected)
    message(FATAL_ERROR "${what} is \"${value}\" instead of \"${expected}\"")
  endif()
endfunction()

# Over an earlier version, which let everybody write to the folder of all phonebooks.
file(MAKE_DIRECTORY "${WORK_DIR}/prefix/var/lib/quelm/phonebook/user")
run(chmod -R 1777 "${WORK_DIR}/prefix/var/lib/quelm/phonebook")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/prefix" --config "${CONFIG}" --component Runtime)

# The units start the program where it was installed, and systemd takes them.
set(units "${WORK_DIR}/prefix/lib/systemd/user")
file(READ "${units}/quelm-outbox.service" service)
if(NOT service MATCHES "\nExecStart=\"${WORK_DIR}/prefix/bin/quelm-driver\" outbox run --quiet\n")
  message(FATAL_ERROR "the unit starts another program:\n${service}")
endif()
run(stat --format=%a "${units}/quelm-outbox.service" "${units}/quelm-outbox.timer")
expect("the mode of the units" "${output}" "644\n644\n")
find_program(SYSTEMD_ANALYZE systemd-analyze)
if(SYSTEMD_ANALYZE)
  file(MAKE_DIRECTORY "${WORK_DIR}/run")
  set(ENV{XDG_RUNTIME_DIR} "${WORK_DIR}/run")
  run("${SYSTEMD_ANALYZE}" --user verify "${units}/quelm-outbox.service" "${units}/quelm-outbox.timer")
  run("${SYSTEMD_ANALYZE}" calendar "*-*-* *:*:00")
endif()

set(prefix "${WORK_DIR}/moved")
file(RENAME "${WORK_DIR}/prefix" "${prefix}")

# Nobody but the administrator makes anything there.
run(find "${prefix}" -perm /022 -not -type l)
expect("what others may write to" "${output}" "")

run("${prefix}/bin/quelm-driver" --user ann phonebook add "Anne Miller" "555 1234")
set(own "$ENV{HOME}/.local/share/quelm")
if(NOT EXISTS "${own}/db/phonebook/user/ann.xdb")
  message(FATAL_ERROR "the phonebook is not in the user's own folder")
endif()
run(stat --format=%a "${own}" "${own}/db/phonebook/user/ann.xdb")
expect("the mode of the user's folder and phonebook" "${output}" "700\n600\n")
run(readlink "${own}/db/phonebook/shared" "${own}/fennodial")
expect("what the user's folder leads to" "${output}" "${prefix}/lib/quelm/db/phonebook\n${prefix}/lib/quelm/fennodial\n")
run("${prefix}/bin/fennodial" --version)
# A card takes a module, which is found where the programs are now.
run("${prefix}/bin/quelm-driver" --user ann phonebook export "${WORK_DIR}/cards.vcf")
file(READ "${WORK_DIR}/cards.vcf" cards)
if(NOT cards MATCHES "FN:Anne Miller")
  message(FATAL_ERROR "the cards lack the entry:\n${cards}")
endif()

# What the desktop shows lies beside the programs.
foreach(file IN ITEMS quelm-desktop help/LanFax.md help/de/LanFax.md help/driver.md help/de/driver.md)
  if(NOT EXISTS "${prefix}/lib/quelm/${file}")
    message(FATAL_ERROR "${file} is not in the home folder")
  endif()
endforeach()
run("${prefix}/bin/quelm-driver" --user ann attributes --entry "Anne Miller")
if(NOT output MATCHES "OID_ATT_FAX_DESTINATION_PHONE \"5551234\"")
  message(FATAL_ERROR "the job does not dial the recipient of the phonebook:\n${output}")
endif()

# Ghostscript is started by the supervisor, which lies beside the programs too.
file(WRITE "${WORK_DIR}/letter.ps" "%!PS\nshowpage\n")
run("${prefix}/bin/quelm-driver" --user ann fax "${WORK_DIR}/letter.ps" --entry "Anne Miller" --output "${WORK_DIR}/job")
if(NOT EXISTS "${WORK_DIR}/job")
  message(FATAL_ERROR "no job was written")
endif()

# The device reads the job, and draws its page.
run("${prefix}/bin/quelm-device" read --json "${WORK_DIR}/job")
string(JSON pages GET "${output}" jobs 0 pages)
expect("the pages that the device would fax" "${pages}" "1")

# The catalogues are found beside the programs.
set(ENV{LANGUAGE} de)
run("${prefix}/bin/quelm-device" --help)
if(NOT output MATCHES "Gerät")
  message(FATAL_ERROR "the device's help is not German:\n${output}")
endif()
file(WRITE "${WORK_DIR}/script" "call T40InvokeFaxDialog\npress \"AddFaxRcpt\"\nshow \"LanFax Add Recipient Window\"\n")
run("${prefix}/bin/quelm-driver" --user ann script "${WORK_DIR}/script")
if(NOT output MATCHES "Faxempfänger hinzufügen")
  message(FATAL_ERROR "the dialog's title is not German:\n${output}")
endif()
file(REMOVE_RECURSE "${WORK_DIR}")
