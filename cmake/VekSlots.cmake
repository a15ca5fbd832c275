# SPDX-License-Identifier: Apache-2.0
# The instruction-level slots: which flags each is compiled with, and vek_kernels(), which compiles a source for slots.

set(VEK_ALL_SLOTS mx m7 u8 n8 y8 e9 l9)
set(VEK_SLOTS "${VEK_ALL_SLOTS}" CACHE STRING "Slots that get code of their own (mx always); the others fall back")

# What detection promises for the slot, and no more: y8 has no SSE4.2 or POPCNT, l9 no LZCNT or MOVBE.
set(VEK_FLAGS_mx "")
set(VEK_FLAGS_m7 -msse3)
set(VEK_FLAGS_u8 -mssse3)
set(VEK_FLAGS_n8 -mssse3 -mmovbe)
set(VEK_FLAGS_y8 -msse4.1)
# gcc takes every call to leave the upper vector halves clean. Where it knows which registers a local function spares, it
# keeps wide values in them across the call and then returns without vzeroupper.
set(VEK_FLAGS_e9 -mavx -mno-popcnt $<$<CXX_COMPILER_ID:GNU>:-fno-ipa-ra>)
set(VEK_FLAGS_l9 -mavx2 -mfma -mbmi -mbmi2 -mno-popcnt $<$<CXX_COMPILER_ID:GNU>:-fno-ipa-ra>)

set(index 0)
foreach(slot IN LISTS VEK_ALL_SLOTS)
  add_library(vek_slot_${slot} OBJECT)
  target_link_libraries(vek_slot_${slot} PRIVATE vek_build)
  target_compile_definitions(vek_slot_${slot} PRIVATE VEK_SLOT=${slot} VEK_SLOT_INDEX=${index})
  target_compile_options(vek_slot_${slot} PRIVATE ${VEK_FLAGS_${slot}})
  math(EXPR index "${index} + 1")
endforeach()

# vek_kernels(source... SLOTS slot...): compiles the sources of this directory once for each slot named. A function's
# table cell without code of its own falls back, so a line names just the slots that gain.
function(vek_kernels)
  cmake_parse_arguments(arg "" "" "SLOTS" ${ARGN})
  foreach(slot IN LISTS arg_SLOTS)
    if(slot STREQUAL "mx" OR slot IN_LIST VEK_SLOTS)
      foreach(source IN LISTS arg_UNPARSED_ARGUMENTS)
        target_sources(vek_slot_${slot} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${source})
      endforeach()
    endif()
  endforeach()
endfunction()

# The slots of the FFT engine. A source that calls it links to the engine of its own slot, so it is compiled for
# exactly these.
set(VEK_FFT_SLOTS mx y8 e9 l9)
