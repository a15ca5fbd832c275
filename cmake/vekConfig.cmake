# SPDX-License-Identifier: Apache-2.0
# The package vek: of each library installed the shared and the static one, vek::shared and vek::static for vek itself,
# vek::vekx_shared and vek::vekx_static for vekx; and as vek::vek and vek::vekx the one that BUILD_SHARED_LIBS asks for, the
# shared one if it says nothing.
foreach(_vek_library vek vekx)
  include(${CMAKE_CURRENT_LIST_DIR}/${_vek_library}Targets.cmake OPTIONAL)
  set(_vek_prefix "")
  if(NOT _vek_library STREQUAL "vek")
    set(_vek_prefix ${_vek_library}_)
  endif()
  set(_vek_kind shared)
  if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    set(_vek_kind static)
  endif()
  if(TARGET vek::${_vek_prefix}${_vek_kind} AND NOT TARGET vek::${_vek_library})
    add_library(vek::${_vek_library} ALIAS vek::${_vek_prefix}${_vek_kind})
  endif()
endforeach()
