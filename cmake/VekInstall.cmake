# SPDX-License-Identifier: Apache-2.0
# Headers, the CMake package vek, which also the build directory offers, and for each library a pkg-config module and the
# file of its targets. The package takes the libraries whose targets are there, so that each can be installed by itself.
set(VEK_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/vek)
if(VEK_INSTALL)
  include(CMakePackageConfigHelpers)
  install(DIRECTORY include/ TYPE INCLUDE)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/vekConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES cmake/vekConfig.cmake ${PROJECT_BINARY_DIR}/vekConfigVersion.cmake DESTINATION ${VEK_PACKAGE_DIR})
  configure_file(cmake/vekConfig.cmake ${PROJECT_BINARY_DIR}/vekConfig.cmake COPYONLY)
endif()

function(vek_install_library name version)
  install(TARGETS ${name}_shared ${name}_static EXPORT ${name}Targets)
  install(EXPORT ${name}Targets NAMESPACE vek:: DESTINATION ${VEK_PACKAGE_DIR})
  export(EXPORT ${name}Targets NAMESPACE vek:: FILE ${PROJECT_BINARY_DIR}/${name}Targets.cmake)
  # Relocatable: found from where the file lies, wherever the tree is put.
  file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/vek.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
