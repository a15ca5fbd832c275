# SPDX-License-Identifier: Apache-2.0
# Headers, both libraries, the CMake package vek with the target vek::vek, the pkg-config module vek, vek-info.
include(CMakePackageConfigHelpers)

install(TARGETS vek_shared vek_static EXPORT vekTargets)
install(DIRECTORY include/ TYPE INCLUDE)
install(EXPORT vekTargets NAMESPACE vek:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vek)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vekConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/vekConfig.cmake ${PROJECT_BINARY_DIR}/vekConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/vek)
# Relocatable: found from where the file lies, wherever the tree is put.
file(RELATIVE_PATH VEK_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/vek.pc.in ${PROJECT_BINARY_DIR}/vek.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vek.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
