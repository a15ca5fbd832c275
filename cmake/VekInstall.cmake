# SPDX-License-Identifier: Apache-2.0
# Headers, the CMake package vek with the targets vek::vek, vek::shared and vek::static, which also the build directory
# offers, and a pkg-config module for each library.
if(VEK_INSTALL)
  include(CMakePackageConfigHelpers)
  install(DIRECTORY include/ TYPE INCLUDE)
  set(package ${CMAKE_INSTALL_LIBDIR}/cmake/vek)
  install(EXPORT vekTargets NAMESPACE vek:: DESTINATION ${package})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/vekConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES cmake/vekConfig.cmake ${PROJECT_BINARY_DIR}/vekConfigVersion.cmake DESTINATION ${package})
  configure_file(cmake/vekConfig.cmake ${PROJECT_BINARY_DIR}/vekConfig.cmake COPYONLY)
  export(EXPORT vekTargets NAMESPACE vek:: FILE ${PROJECT_BINARY_DIR}/vekTargets.cmake)
endif()

# Relocatable: found from where the file lies, wherever the tree is put.
function(vek_install_pkgconfig name version)
  file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/vek.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
