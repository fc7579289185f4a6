# What `cmake --install` does for the driver's users:
#
#   lib/quelm/                  the home folder: the programs beside the component, locale/, icon/, help/, db
#   bin/                        a link to each program
#   share/                      man pages, the shells' completions, the guides, an example of the configuration; what
#                               desktops know the programs by, see InstallDesktop.cmake
#   lib/systemd/user/           the timer that sends what waits in a user's outbox, for those who enable it
#   <state>/lib/quelm/phonebook the machine's shared phonebooks, which its administrator keeps and everybody reads;
#                               the home folder's db leads there. Each user's own are in a folder of his own, see
#                               driver/config/user_place.h. Below /usr it is /var/lib/quelm/phonebook.
# SPDX-License-Identifier: LGPL-2.1-or-later
if(TARGET write-manual)
  include("${CMAKE_CURRENT_LIST_DIR}/InstallManual.cmake")
endif()

set(programs "")
foreach(program quelm-driver quelm-desktop fennodial quelm-device)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION "${BRAMBLECOR_INSTALL_HOME}" COMPONENT Runtime)
    list(APPEND programs ${program})
  endif()
endforeach()
include(cmake/InstallDesktop.cmake)

# For those who read: all guides but those of the house itself, and the pictures in them.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/quelm" COMPONENT Runtime
  FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "help" EXCLUDE PATTERN "decisions" EXCLUDE
  PATTERN "assurance.md" EXCLUDE PATTERN "building.md" EXCLUDE PATTERN "performance.md" EXCLUDE)
install(FILES "${PROJECT_SOURCE_DIR}/packaging/quelm.conf" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/quelm"
  COMPONENT Runtime OPTIONAL)

install(CODE "set(programs \"${programs}\")
set(home \"${BRAMBLECOR_INSTALL_HOME}\")
set(bin \"${CMAKE_INSTALL_BINDIR}\")
set(units \"lib/systemd/user\")
set(unit_sources \"${PROJECT_SOURCE_DIR}/packaging/systemd\")
set(state \"${CMAKE_INSTALL_LOCALSTATEDIR}/lib/quelm\")
" COMPONENT Runtime)
install(CODE [[
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr" AND NOT IS_ABSOLUTE "${state}")
  set(state "/${state}")
endif()
foreach(folder IN ITEMS home bin state units)
  if(NOT IS_ABSOLUTE "${${folder}}")
    set(${folder} "${CMAKE_INSTALL_PREFIX}/${${folder}}")
  endif()
endforeach()
file(RELATIVE_PATH from_bin "${bin}" "${home}")
file(MAKE_DIRECTORY "$ENV{DESTDIR}${bin}")
foreach(program IN LISTS programs)
  file(CREATE_LINK "${from_bin}/${program}" "$ENV{DESTDIR}${bin}/${program}" SYMBOLIC)
  list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${bin}/${program}")
endforeach()
list(FIND programs quelm-driver driver_position)
if(driver_position GREATER_EQUAL 0)
  # A percent sign begins a specifier there, a backslash an escape.
  string(REPLACE "%" "%%" quelm_driver "${bin}/quelm-driver")
  string(REPLACE "\\" "\\\\" quelm_driver "${quelm_driver}")
  configure_file("${unit_sources}/quelm-outbox.service.in" "$ENV{DESTDIR}${units}/quelm-outbox.service" @ONLY)
  list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${units}/quelm-outbox.service")
  file(INSTALL "${unit_sources}/quelm-outbox.timer" DESTINATION "${units}")
endif()
message(STATUS "Phonebooks: $ENV{DESTDIR}${state}/phonebook")
file(MAKE_DIRECTORY "$ENV{DESTDIR}${state}/phonebook")
# Earlier versions let everybody write to both: users' own phonebooks were below, and are taken over from there.
set(closed "$ENV{DESTDIR}${state}/phonebook")
if(IS_DIRECTORY "${closed}/user")
  list(APPEND closed "${closed}/user")
endif()
execute_process(COMMAND chmod 755 ${closed} COMMAND_ERROR_IS_FATAL ANY)
file(RELATIVE_PATH from_home "${home}" "${state}")
file(CREATE_LINK "${from_home}" "$ENV{DESTDIR}${home}/db" SYMBOLIC)
list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${home}/db")
]] COMPONENT Runtime)
