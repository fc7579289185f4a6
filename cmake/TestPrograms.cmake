# Test programs, one for each room, and how ctest knows their tests.
#
#   add_room_tests(driver/device SOURCES snmp_session_test.cpp ... LIBRARIES driver_device SERVER SnmpSessionTest ...)
#
# makes the program driver_device_tests. ctest runs each of its suites as one test, driver/device.SUITE, with a label:
#
#   fast     everything that is not said to be something else
#   root     the suites behind ROOT, which become other users of the machine: root alone can
#   server   the suites behind SERVER, which wait for servers on loopback, or for silence
#   screen   the suites behind SCREEN, which get a display of their own
#   journey  whole tasks on the built programs
#
# DEPENDS names targets that the tests use while they run. LABEL gives all tests another label than `fast`,
# PRECOMPILED another set of headers than `tests`. A room whose tests are no such program has a target of that form
# of name all the same, which builds what they need: tools/check asks for it.
# SPDX-License-Identifier: LGPL-2.1-or-later
include_guard(GLOBAL)

set(WITH_DISPLAY "${PROJECT_SOURCE_DIR}/tests/driver/desktop/with-display")

function(add_room_tests room)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL;PRECOMPILED" "SOURCES;LIBRARIES;DEPENDS;ROOT;SERVER;SCREEN")
  if(NOT arg_LABEL)
    set(arg_LABEL fast)
  endif()
  if(NOT arg_PRECOMPILED)
    set(arg_PRECOMPILED tests)
  endif()
  string(REPLACE "/" "_" program "${room}_tests")

  add_executable(${program} ${arg_SOURCES})
  # The component looks for its host's operations in the program that loads it.
  set_target_properties(${program} PROPERTIES ENABLE_EXPORTS ON)
  target_link_libraries(${program} PRIVATE bramblecor_options ${arg_LIBRARIES} build_paths test_framework)
  precompile(${program} WITH ${arg_PRECOMPILED})
  if(arg_DEPENDS)
    add_dependencies(${program} ${arg_DEPENDS})
  endif()
  if(room MATCHES "^driver/")
    add_dependencies(${program} modules)
  endif()
  if(room MATCHES "^(base/ghostscript|device|driver)(/|$)")
    # Programs that run Ghostscript look for it beside themselves.
    file(CREATE_LINK "${BRAMBLECOR_STAGE_DIR}/quelm-supervisor" "${CMAKE_CURRENT_BINARY_DIR}/quelm-supervisor" SYMBOLIC)
  endif()

  set(tests "${CMAKE_CURRENT_BINARY_DIR}/${program}.cmake")
  file(GENERATE OUTPUT "${tests}" CONTENT "\
set(program \"$<TARGET_FILE:${program}>\")
set(room \"${room}\")
set(label \"${arg_LABEL}\")
set(root \"${arg_ROOT}\")
set(server \"${arg_SERVER}\")
set(screen \"${arg_SCREEN}\")
set(with_display \"${WITH_DISPLAY}\")
set(results \"${PROJECT_BINARY_DIR}/test-results\")
include(\"${PROJECT_SOURCE_DIR}/cmake/DiscoverSuites.cmake\")
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${tests}")
endfunction()
