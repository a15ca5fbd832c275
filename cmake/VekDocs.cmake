# SPDX-License-Identifier: Apache-2.0
# The target vek_docs: the reference as HTML and manual pages in docs/ of the build directory.
find_program(VEK_DOXYGEN doxygen)
if(VEK_DOXYGEN)
  set(VEK_REFERENCE ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/reference.py --root ${PROJECT_SOURCE_DIR}
                    --out ${PROJECT_BINARY_DIR}/docs --version ${PROJECT_VERSION} --names ${vek_DERIVED}/names.txt ${vekx_DERIVED}/names.txt)
  add_custom_target(vek_docs COMMAND ${VEK_REFERENCE} DEPENDS vek_derived vekx_derived VERBATIM)
  if(VEK_INSTALL)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/man/man3 DESTINATION ${CMAKE_INSTALL_MANDIR} OPTIONAL)
  endif()
endif()
