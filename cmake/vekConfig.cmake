# SPDX-License-Identifier: Apache-2.0
# The package vek: vek::shared and vek::static, and as vek::vek the one that BUILD_SHARED_LIBS asks for, the shared one if
# it says nothing.
include(${CMAKE_CURRENT_LIST_DIR}/vekTargets.cmake)
if(NOT TARGET vek::vek)
  if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    add_library(vek::vek ALIAS vek::static)
  else()
    add_library(vek::vek ALIAS vek::shared)
  endif()
endif()
