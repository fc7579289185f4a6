# Rooms: a folder of sources is one subject, and one target of the folder's name.
#
#   add_room(driver/store
#     SOURCES phonebook_file.cpp record_store.cpp
#     ROOMS base base/sqlite
#     LIBRARIES SQLite::SQLite3)
#
# makes the archive `driver_store`. ROOMS is what the room may include, and exactly what it links of ours;
# tests/layers compares it with the table of all rooms. LIBRARIES are those of others, as its sources need them.
# PRECOMPILED is the set of headers that the sources start with: `standard` unless it says otherwise.
#
# With OBJECTS the room is a set of objects, which a program that links it takes whole: its functions are looked up by
# name once the component is loaded. With SHARED it is a library that all programs load, in the stage folder. A room
# without sources has headers only.
# SPDX-License-Identifier: LGPL-2.1-or-later
include_guard(GLOBAL)

function(add_room folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "OBJECTS;SHARED" "PRECOMPILED" "SOURCES;ROOMS;LIBRARIES")
  string(REPLACE "/" "_" room "${folder}")
  string(REPLACE "/" "_" used_rooms "${arg_ROOMS}")
  if(arg_SHARED)
    set(arg_PRECOMPILED shared)
  elseif(NOT arg_PRECOMPILED)
    set(arg_PRECOMPILED standard)
  endif()
  string(REPLACE ";" " " line "${folder}: ${arg_ROOMS}")
  set_property(GLOBAL APPEND_STRING PROPERTY BRAMBLECOR_ROOM_LINES "${line}\n")

  if(NOT arg_SOURCES)
    add_library(${room} INTERFACE)
    target_link_libraries(${room} INTERFACE bramblecor_options ${used_rooms} ${arg_LIBRARIES})
    return()
  endif()
  if(arg_OBJECTS)
    set(compiled ${room}_objects)
    add_library(${compiled} OBJECT ${arg_SOURCES})
    add_library(${room} INTERFACE)
    target_link_libraries(${room} INTERFACE
      $<TARGET_OBJECTS:${compiled}> bramblecor_options ${used_rooms} ${arg_LIBRARIES})
  elseif(arg_SHARED)
    set(compiled ${room})
    add_library(${compiled} SHARED ${arg_SOURCES})
    set_target_properties(${compiled} PROPERTIES
      CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF LIBRARY_OUTPUT_DIRECTORY "${BRAMBLECOR_STAGE_DIR}")
  else()
    set(compiled ${room})
    add_library(${compiled} STATIC ${arg_SOURCES})
  endif()
  target_link_libraries(${compiled} PUBLIC bramblecor_options ${used_rooms} ${arg_LIBRARIES})
  precompile(${compiled} WITH ${arg_PRECOMPILED})
  if(arg_PRECOMPILED MATCHES "^(standard|shared)$")
    optimise_when_sanitized(${compiled})
  endif()
endfunction()

# What each room links of ours, for tests/layers: a line "FOLDER: ROOM ROOM..." for each.
function(write_rooms file)
  get_property(lines GLOBAL PROPERTY BRAMBLECOR_ROOM_LINES)
  file(CONFIGURE OUTPUT "${file}" CONTENT "${lines}" @ONLY)
endfunction()
