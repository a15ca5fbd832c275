# SPDX-License-Identifier: Apache-2.0
# The slots, as core/slots.def lists them, and what a directory says of its sources: vek_kernels() and vek_frame().

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS core/slots.def)
file(STRINGS core/slots.def rows REGEX "^VEK_SLOT_ROW")
set(VEK_ALL_SLOTS)
foreach(row IN LISTS rows)
  string(REGEX MATCH "\\(([a-z0-9]+), ([a-z0-9]+), \"([^\"]*)\"" row "${row}")
  set(slot ${CMAKE_MATCH_1})
  list(APPEND VEK_ALL_SLOTS ${slot})
  separate_arguments(flags UNIX_COMMAND "${CMAKE_MATCH_3}")
  set(VEK_FLAGS_${slot} ${VEK_FLAGS_${CMAKE_MATCH_2}} ${flags})
  set(VEK_SERVING_${slot} ${slot} ${VEK_SERVING_${CMAKE_MATCH_2}})
endforeach()
set(VEK_SLOTS "${VEK_ALL_SLOTS}" CACHE STRING "Slots that get code of their own (mx always); the others fall back")

# gcc takes every call to leave the upper vector halves clean. Where it knows which registers a local function spares, it
# keeps wide values in them across the call and then returns without vzeroupper.
foreach(slot IN LISTS VEK_ALL_SLOTS)
  if("-mavx" IN_LIST VEK_FLAGS_${slot})
    list(APPEND VEK_FLAGS_${slot} $<$<CXX_COMPILER_ID:GNU>:-fno-ipa-ra>)
  endif()
endforeach()

# The slots of the FFT engine, and those of the sources that call it, which link to the engine of their own slot. That of
# mx serves y8, too: SSE4.1 has nothing that would make it faster.
set(VEK_FFT_ENGINES mx e9 l9)
set(VEK_FFT_SLOTS mx y8 e9 l9)
list(APPEND VEK_FLAGS_y8 -DVEK_FFT_SLOT=mx)

# Sources belong to a library, vek if nothing else is said, or to "both": those are compiled once and linked into every
# library of this project.
function(vek_note_sources library part)
  list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  set_property(GLOBAL APPEND PROPERTY VEK_SOURCES_${library}_${part} ${ARGN})
endfunction()

# vek_kernels(source... SLOTS slot... [FLAGS flag...] [LIBRARY name]): the sources of this directory are compiled once for
# each slot named. A function's table cell without code of its own falls back, so a line names just the slots that gain;
# SLOTS ALL is for what every slot has even where VEK_SLOTS leaves it nothing else.
function(vek_kernels)
  cmake_parse_arguments(arg "" "LIBRARY" "SLOTS;FLAGS" ${ARGN})
  if(NOT arg_LIBRARY)
    set(arg_LIBRARY vek)
  endif()
  if(arg_SLOTS STREQUAL "ALL")
    set(slots ${VEK_ALL_SLOTS})
  else()
    string(REPLACE ";" "|" built "mx;${VEK_SLOTS}")
    set(slots ${arg_SLOTS})
    list(FILTER slots INCLUDE REGEX "^(${built})$")
  endif()
  # Where y8 has code of its own, hardly any processor of today runs that of the slots below.
  list(FIND slots y8 has_y8)
  foreach(slot IN LISTS slots)
    set(part ${slot})
    if(slot MATCHES "^(mx|m7|u8|n8)$" AND has_y8 GREATER -1 AND NOT arg_SLOTS STREQUAL "ALL")
      string(APPEND part _small)
    endif()
    vek_note_sources(${arg_LIBRARY} ${part} ${arg_UNPARSED_ARGUMENTS})
  endforeach()
  if(arg_FLAGS)
    set_source_files_properties(${arg_UNPARSED_ARGUMENTS} DIRECTORY ${PROJECT_SOURCE_DIR}
                                PROPERTIES COMPILE_OPTIONS "${arg_FLAGS}")
  endif()
endfunction()

# vek_frame(source... [LIBRARY name]): the sources of this directory are compiled once, for any processor.
function(vek_frame)
  cmake_parse_arguments(arg "" "LIBRARY" "" ${ARGN})
  if(NOT arg_LIBRARY)
    set(arg_LIBRARY vek)
  endif()
  vek_note_sources(${arg_LIBRARY} frame ${arg_UNPARSED_ARGUMENTS})
endfunction()
