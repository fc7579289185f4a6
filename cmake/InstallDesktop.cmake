# What desktops know the programs by: entries for their menus, AppStream metadata for software centres, the MIME type
# of phonebooks, icons. The texts are translated from the catalogues' sources; the sources of it all are in packaging/.
# SPDX-License-Identifier: LGPL-2.1-or-later
find_program(MSGFMT msgfmt REQUIRED)
get_directory_property(languages DIRECTORY "${PROJECT_SOURCE_DIR}/po" DEFINITION languages)
set(sources "${PROJECT_SOURCE_DIR}/packaging/desktop")
set(folder "${CMAKE_BINARY_DIR}/desktop")
set(desktop_id net.quelm.Desktop)

# msgfmt takes all languages of a folder that lists them.
list(JOIN languages "\n" list_of_languages)
file(CONFIGURE OUTPUT "${folder}/po/LINGUAS" CONTENT "@list_of_languages@\n" @ONLY)
set(catalogues "")
foreach(language IN LISTS languages)
  add_custom_command(OUTPUT "${folder}/po/${language}.po"
    COMMAND "${CMAKE_COMMAND}" -E copy "${PROJECT_SOURCE_DIR}/po/${language}.po" "${folder}/po"
    DEPENDS "${PROJECT_SOURCE_DIR}/po/${language}.po" VERBATIM)
  list(APPEND catalogues "${folder}/po/${language}.po")
endforeach()

# Translates one of the files: its name, how msgfmt reads it, where it is installed below share/.
set(translated "")
function(translated_file name mode destination)
  add_custom_command(OUTPUT "${folder}/${name}"
    COMMAND "${CMAKE_COMMAND}" -E env "GETTEXTDATADIRS=${sources}/gettext"
      "${MSGFMT}" ${mode} "--template=${sources}/${name}.in" -d "${folder}/po" -o "${folder}/${name}"
    DEPENDS "${sources}/${name}.in" ${catalogues} "${sources}/gettext/its/quelm-desktop-files.its"
    COMMENT "Translating ${name}" VERBATIM)
  set(translated ${translated} "${folder}/${name}" PARENT_SCOPE)
  install(FILES "${folder}/${name}" DESTINATION "${CMAKE_INSTALL_DATADIR}/${destination}" COMPONENT Runtime)
endfunction()
translated_file(${desktop_id}.desktop --desktop applications)
translated_file(net.quelm.Phonebook.desktop --desktop applications)
translated_file(${desktop_id}.metainfo.xml --xml metainfo)
translated_file(${desktop_id}.xml --xml mime/packages)
add_custom_target(desktop_files ALL DEPENDS ${translated})

# See icon/draw.sh.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/packaging/icons/hicolor" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons"
  COMPONENT Runtime)
install(FILES "${PROJECT_SOURCE_DIR}/icon/source/quelm-driver.svg"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" RENAME "${desktop_id}.svg" COMPONENT Runtime)
