# SPDX-License-Identifier: Apache-2.0
# vek_add_library(): a library from its prototypes and from the sources that vek_frame() and vek_kernels() have named.

# How every file of a library is compiled. Contraction is off everywhere: results must not depend on what a compiler
# fuses. Nor may they, or what a slot demands of the processor, depend on flags of a parent project or the environment,
# which come before these. Every place that an indirect jump may lead to says so. A section for each function and constant
# lets the linker leave out of a static program what it does not call. No exceptions, type information or guarded statics:
# a library runs on libc and libm alone.
add_library(vek_build INTERFACE)
target_include_directories(vek_build INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
target_compile_features(vek_build INTERFACE cxx_std_20)
target_compile_options(
  vek_build INTERFACE ${VEK_WARNINGS} -Wno-psabi -march=x86-64 -fcf-protection=full -fno-fast-math -ffp-contract=off -fno-math-errno
                      -fno-trapping-math -ffunction-sections -fdata-sections
                      $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions;-fno-rtti;-fno-threadsafe-statics>
                      $<$<CONFIG:Release>:$<IF:$<BOOL:$<TARGET_PROPERTY:VEK_SMALL>>,-Os,-O3>;-fno-plt>)

# An object library. Without link-time optimisation, which would carry code from slot to slot and hide the symbols that
# tables are formed from.
function(vek_add_objects target)
  add_library(${target} OBJECT ${ARGN})
  target_link_libraries(${target} PRIVATE vek_build)
  target_compile_options(${target} PRIVATE -fno-lto)
  set_target_properties(
    ${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                         VISIBILITY_INLINES_HIDDEN ON INTERPROCEDURAL_OPTIMIZATION OFF UNITY_BUILD OFF)
endfunction()

# The targets of the sources named for a library, or for both, which the first caller creates: `frame` and `kernels`
# receive them.
function(vek_object_targets library frame kernels)
  set(prefix ${library})
  if(library STREQUAL "both")
    set(prefix vek_both)
  endif()
  get_property(sources GLOBAL PROPERTY VEK_SOURCES_${library}_frame)
  set(found_frame)
  if(sources)
    set(found_frame ${prefix}_frame)
    if(NOT TARGET ${found_frame})
      vek_add_objects(${found_frame} ${sources})
    endif()
  endif()
  set(found_kernels)
  set(index 0)
  foreach(slot IN LISTS VEK_ALL_SLOTS)
    foreach(part ${slot} ${slot}_small)
      get_property(sources GLOBAL PROPERTY VEK_SOURCES_${library}_${part})
      if(sources)
        set(target ${prefix}_slot_${part})
        list(APPEND found_kernels ${target})
        if(NOT TARGET ${target})
          vek_add_objects(${target} ${sources})
          target_compile_definitions(${target} PRIVATE VEK_SLOT=${slot} VEK_SLOT_INDEX=${index})
          target_compile_options(${target} PRIVATE ${VEK_FLAGS_${slot}})
          if(part MATCHES small)
            target_compile_definitions(${target} PRIVATE VEK_SMALL_CODE)
            set_target_properties(${target} PROPERTIES VEK_SMALL ON)
          endif()
        endif()
      endif()
    endforeach()
    math(EXPR index "${index} + 1")
  endforeach()
  set(${frame} ${found_frame} PARENT_SCOPE)
  set(${kernels} ${found_kernels} PARENT_SCOPE)
endfunction()

# The dispatch tables, formed from what the kernels' objects define, and what says which slot may be in force: the target
# name_tables for all slots, or name_tables_slot for a library that has only that one.
function(vek_add_tables name)
  set(target ${name}_tables)
  set(choice vek_any_slot)
  set(options)
  set(definition)
  foreach(slot IN LISTS ARGN)
    set(target ${name}_tables_${slot})
    set(choice vek_only_${slot})
    set(options --slot ${slot})
    set(definition VEK_ONLY_SLOT=vek::kSlot_${slot})
  endforeach()
  set(file ${derived}/${target}.cpp)
  add_custom_command(
    OUTPUT ${file}
    COMMAND ${derive} tables --headers ${headers} --objects @${list} --out ${file} ${options}
    COMMAND ${CMAKE_COMMAND} -E touch ${file}
    DEPENDS ${headers} ${kernels} ${list} ${derive_sources}
    VERBATIM)
  vek_add_objects(${target} ${file})
  add_dependencies(${target} ${name}_derived)
  if(NOT TARGET ${choice})
    vek_add_objects(${choice} ${PROJECT_SOURCE_DIR}/core/only_slot.cpp)
    target_compile_definitions(${choice} PRIVATE ${definition})
    add_dependencies(${choice} ${name}_derived)
  endif()
  set(tables $<TARGET_OBJECTS:${target}> $<TARGET_OBJECTS:${choice}> PARENT_SCOPE)
endfunction()

# What makes a shared library of objects: soname, exports, hardening.
function(vek_set_shared name target)
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} LINKER_LANGUAGE C VERSION ${arg_VERSION} SOVERSION ${major}
                                             LINK_DEPENDS ${exports})
  target_link_libraries(${target} PRIVATE m)
  target_link_options(${target} PRIVATE -Wl,--version-script=${exports} -Wl,-Bsymbolic-functions -Wl,-z,relro -Wl,-z,now
                      -Wl,-z,noexecstack -Wl,-z,text -Wl,--as-needed -Wl,--gc-sections)
  if(NOT VEK_SANITIZE)
    # Nothing of the C library's start files is needed, and theirs lack the control-flow notes without which the whole
    # file counts as unprotected.
    target_link_options(${target} PRIVATE -Wl,-z,defs -nostartfiles)
  endif()
endfunction()

# One shared library for each slot that has code of its own, of the same name, from the same objects. Who puts its
# directory into LD_LIBRARY_PATH forces the slot; the library itself reads no environment.
function(vek_add_slot_libraries name)
  foreach(slot IN LISTS VEK_ALL_SLOTS)
    if(slot STREQUAL "mx" OR slot IN_LIST VEK_SLOTS)
      vek_add_tables(${name} ${slot})
      set(code)
      foreach(serving IN LISTS VEK_SERVING_${slot})
        foreach(target ${name}_slot_${serving} ${name}_slot_${serving}_small vek_both_slot_${serving}
                       vek_both_slot_${serving}_small)
          if(TARGET ${target})
            list(APPEND code $<TARGET_OBJECTS:${target}>)
          endif()
        endforeach()
      endforeach()
      add_library(${name}_only_${slot}_shared SHARED ${frame} ${tables} ${code})
      vek_set_shared(${name} ${name}_only_${slot}_shared)
      target_link_options(${name}_only_${slot}_shared PRIVATE -Wl,--gc-sections)
      set_target_properties(${name}_only_${slot}_shared PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/slots/${slot})
      if(VEK_INSTALL)
        install(TARGETS ${name}_only_${slot}_shared
                LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/vek/slots/${slot} NAMELINK_SKIP)
      endif()
    endif()
  endforeach()
endfunction()

# One file that the prototypes imply; its stamp is added to the caller's `stamps`.
function(vek_derive what file)
  set(stamp ${derived}/${what}.stamp)
  add_custom_command(
    OUTPUT ${stamp}
    BYPRODUCTS ${file}
    COMMAND ${derive} ${what} --headers ${headers} --out ${file} ${ARGN}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${headers} ${derive_sources}
    VERBATIM)
  set(stamps ${stamps} ${stamp} PARENT_SCOPE)
endfunction()

# vek_add_library(name VERSION version CHAPTERS chapter...): the targets name_shared and name_static. Users know them as
# vek::shared and vek::static (vek::name_shared and vek::name_static where the library is not vek itself), and the one
# that BUILD_SHARED_LIBS asks for as vek::name. Chapters are include/name/chapter.h. The caller's scope receives
# name_HEADERS, and name_DERIVED, the directory of derived files.
function(vek_add_library name)
  cmake_parse_arguments(arg "" "VERSION" "CHAPTERS" ${ARGN})
  string(REGEX MATCH "^[0-9]+" major ${arg_VERSION})
  list(TRANSFORM arg_CHAPTERS PREPEND ${PROJECT_SOURCE_DIR}/include/${name}/ OUTPUT_VARIABLE headers)
  list(TRANSFORM headers APPEND .h)
  set(exports ${PROJECT_SOURCE_DIR}/core/${name}.map)
  set(derived ${PROJECT_BINARY_DIR}/derived/${name})
  file(MAKE_DIRECTORY ${derived})
  set(derive ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/derive.py)
  set(derive_sources ${PROJECT_SOURCE_DIR}/tools/derive.py ${PROJECT_SOURCE_DIR}/tools/slots.py
                     ${PROJECT_SOURCE_DIR}/core/slots.def)

  # Some derived files are kept in the tree: the headers, because the public ones include them, and the export list, so
  # that a change of the interface shows in its diff. They are written when they change; where this is a part of another
  # project, whose tree may be read-only, they are compared.
  set(kept)
  if(NOT PROJECT_IS_TOP_LEVEL)
    set(kept --compare)
  endif()
  set(stamps)
  vek_derive(idx-header ${PROJECT_SOURCE_DIR}/include/${name}/idx.h ${kept})
  vek_derive(spans ${PROJECT_SOURCE_DIR}/include/${name}/spans.hpp ${kept})
  vek_derive(exports ${exports} ${kept})
  vek_derive(idx-source ${derived}/idx.cpp)
  vek_derive(entries ${derived}/entries.S)
  vek_derive(names ${derived}/names.txt)
  vek_derive(plain ${derived}/plain.txt)
  vek_derive(functions ${derived}/functions.inc)
  add_custom_target(${name}_derived DEPENDS ${stamps})

  vek_object_targets(both both_frame both_kernels)
  vek_object_targets(${name} own_frame own_kernels)
  set(kernels)
  foreach(target ${both_kernels} ${own_kernels})
    list(APPEND kernels $<TARGET_OBJECTS:${target}>)
  endforeach()

  set(list ${derived}/kernel_objects.txt)
  file(GENERATE OUTPUT ${list} CONTENT "$<JOIN:${kernels},\n>\n")
  vek_add_objects(${name}_derived_objects ${derived}/entries.S ${derived}/idx.cpp)
  foreach(target ${both_frame} ${both_kernels} ${own_frame} ${own_kernels} ${name}_derived_objects)
    add_dependencies(${target} ${name}_derived)
  endforeach()
  set(frame $<TARGET_OBJECTS:${name}_derived_objects>)
  foreach(target ${both_frame} ${own_frame})
    list(APPEND frame $<TARGET_OBJECTS:${target}>)
  endforeach()
  vek_add_tables(${name})

  string(REGEX REPLACE "^vek_" "" prefix ${name}_)
  foreach(kind shared static)
    string(TOUPPER ${kind} type)
    add_library(${name}_${kind} ${type} ${frame} ${tables} ${kernels})
    add_library(vek::${prefix}${kind} ALIAS ${name}_${kind})
    set_target_properties(${name}_${kind} PROPERTIES OUTPUT_NAME ${name} EXPORT_NAME ${prefix}${kind} LINKER_LANGUAGE C)
    target_include_directories(${name}_${kind} INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                                         $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  endforeach()
  target_link_libraries(${name}_static INTERFACE m)
  target_link_options(${name}_static INTERFACE LINKER:--gc-sections)
  vek_set_shared(${name} ${name}_shared)
  if(VEK_SLOT_LIBRARIES)
    vek_add_slot_libraries(${name})
  endif()
  if(BUILD_SHARED_LIBS)
    add_library(vek::${name} ALIAS ${name}_shared)
    set(other static)
  else()
    add_library(vek::${name} ALIAS ${name}_static)
    set(other shared)
  endif()
  if(VEK_INSTALL)
    vek_install_library(${name} ${arg_VERSION})
  elseif(NOT PROJECT_IS_TOP_LEVEL)
    set_target_properties(${name}_${other} PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()

  set(${name}_HEADERS ${headers} PARENT_SCOPE)
  set(${name}_DERIVED ${derived} PARENT_SCOPE)
endfunction()
