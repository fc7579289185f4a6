# What `cmake --install` puts where: the driver's home folder, the headers, the CMake package.
#
#   lib/quelm/                       the home folder: the component and, beside it, the programs, icon/, db/
#   include/bramblecor-lan-fax/      host/ and model/, included by these names
#   <libdir>/cmake/BramblecorLanFax  find_package(BramblecorLanFax): what a host is written against
#
# The programs are installed by InstallDriver.cmake. Two install components: "Runtime" is what users need, "Development" what writers of hosts need.
# SPDX-License-Identifier: LGPL-2.1-or-later
include(CMakePackageConfigHelpers)

set(header_dir "${CMAKE_INSTALL_INCLUDEDIR}/bramblecor-lan-fax")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/BramblecorLanFax")

# BramblecorLanFax::host, the headers, and BramblecorLanFax::component, the library. A host loads the
# library and never links it: the library needs the host's own functions.
add_library(installed_host INTERFACE)
set_target_properties(installed_host PROPERTIES EXPORT_NAME host)
target_include_directories(installed_host INTERFACE "$<INSTALL_INTERFACE:${header_dir}>")
target_compile_features(installed_host INTERFACE cxx_std_20)

install(TARGETS BramblecorLanFax EXPORT BramblecorLanFaxTargets
  LIBRARY DESTINATION "${BRAMBLECOR_INSTALL_HOME}" COMPONENT Runtime)
install(TARGETS installed_host EXPORT BramblecorLanFaxTargets)
install(EXPORT BramblecorLanFaxTargets NAMESPACE BramblecorLanFax::
  DESTINATION "${package_dir}" COMPONENT Development)

install(DIRECTORY "${PROJECT_SOURCE_DIR}/host" DESTINATION "${header_dir}" COMPONENT Development
  FILES_MATCHING PATTERN "*.h")
foreach(header IN ITEMS fax_job recipient recipient_list)
  install(FILES "${PROJECT_SOURCE_DIR}/component/model/${header}.h"
    DESTINATION "${header_dir}/model" COMPONENT Development)
endforeach()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/BramblecorLanFaxConfig.cmake.in"
  "${CMAKE_BINARY_DIR}/BramblecorLanFaxConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/BramblecorLanFaxConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${CMAKE_BINARY_DIR}/BramblecorLanFaxConfig.cmake"
  "${CMAKE_BINARY_DIR}/BramblecorLanFaxConfigVersion.cmake"
  DESTINATION "${package_dir}" COMPONENT Development)

if(BRAMBLECOR_DRIVER)
  include(cmake/InstallDriver.cmake)
endif()
