# Rules for the managed half of the build: dotnet builds, WrpGen runs and the
# proxy assemblies that compile WrpGen's C# output.

set(DOTNET_OUT "${CMAKE_BINARY_DIR}/dotnet")
set(GEN_DIR "${CMAKE_BINARY_DIR}/gen")
set(STAGE_DIR "${CMAKE_BINARY_DIR}/stage")
set(STAGE_PKG "${STAGE_DIR}/orvane")
set(WRPGEN_SHARDS 8)

# dotnet_build(<target> PROJECT <csproj> OUTPUT <dir> PRODUCT <dll name> [READY_TO_RUN]
#              [DEPENDS <files/targets>...] [PROPERTIES <-p:...>...])
# READY_TO_RUN publishes instead of building, with the assemblies precompiled
# (each project says which it leaves to the JIT): less JIT work at import.
function(dotnet_build target)
  cmake_parse_arguments(A "READY_TO_RUN" "PROJECT;OUTPUT;PRODUCT" "DEPENDS;PROPERTIES;SOURCE_DIRS" ${ARGN})
  set(_verb build)
  if(A_READY_TO_RUN)
    set(_verb publish)
    list(APPEND A_PROPERTIES -p:PublishReadyToRun=true)
  endif()
  get_filename_component(_projdir "${A_PROJECT}" DIRECTORY)
  set(_globs "${_projdir}/*.cs" "${_projdir}/*.csproj" "${_projdir}/*.props" "${_projdir}/*.xml")
  foreach(_d IN LISTS A_SOURCE_DIRS)
    list(APPEND _globs "${_d}/*.cs")
  endforeach()
  file(GLOB_RECURSE _sources CONFIGURE_DEPENDS ${_globs})
  list(FILTER _sources EXCLUDE REGEX "/(bin|obj)/")
  add_custom_command(
    OUTPUT "${A_OUTPUT}/${A_PRODUCT}"
    COMMAND "${DOTNET_EXE}" ${_verb} "${A_PROJECT}" -c Release --nologo -v:q -clp:ErrorsOnly
            -o "${A_OUTPUT}" ${A_PROPERTIES}
    COMMAND "${CMAKE_COMMAND}" -E touch "${A_OUTPUT}/${A_PRODUCT}"
    DEPENDS ${_sources} ${A_DEPENDS} "${CMAKE_SOURCE_DIR}/Directory.Build.props"
    WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}"
    COMMENT "dotnet ${_verb} ${A_PROJECT}"
    VERBATIM)
  add_custom_target(${target} DEPENDS "${A_OUTPUT}/${A_PRODUCT}")
  # One dotnet at a time, in the order the projects are declared: projects
  # share referenced projects' obj folders, which concurrent builds corrupt.
  get_property(_previous GLOBAL PROPERTY ORVANE_LAST_DOTNET_TARGET)
  if(_previous)
    add_dependencies(${target} ${_previous})
  endif()
  set_property(GLOBAL PROPERTY ORVANE_LAST_DOTNET_TARGET ${target})
endfunction()

# wrpgen_module(<target> ASSEMBLY <dll> [ASSEMBLY_TARGET <target making it>] MODULE <python module>
#               PROXY <proxy assembly name> NAME <short name> [SIBLINGS <dll>=<module>...] [EXPORT_CAPSULES]
#               [STAGE_STUBS])
# Runs the generator; its C++ goes to gen/<NAME>/cpp as a fixed set of shards
# (so CMake knows the file names before the generator runs), its C# to gen/<NAME>/cs.
# STAGE_STUBS copies the module's .pyi stubs into the staged tree for editors.
function(wrpgen_module target)
  cmake_parse_arguments(A "EXPORT_CAPSULES;STAGE_STUBS" "ASSEMBLY;ASSEMBLY_TARGET;MODULE;PROXY;NAME" "SIBLINGS;DEPENDS" ${ARGN})
  set(_out "${GEN_DIR}/${A_NAME}")
  set(_shards "")
  math(EXPR _last "${WRPGEN_SHARDS} - 1")
  foreach(_i RANGE ${_last})
    if(_i LESS 10)
      set(_i "0${_i}")
    endif()
    list(APPEND _shards "${_out}/cpp/shard_${_i}.cpp")
  endforeach()
  set(_args --assembly "${A_ASSEMBLY}" --module "${A_MODULE}" --proxy-assembly "${A_PROXY}"
            --company orvane --cpp-out "${_out}/cpp" --cs-out "${_out}/cs"
            --report "${_out}/skipped-members.txt" --pyi-out "${_out}/pyi"
            --shards ${WRPGEN_SHARDS})
  foreach(_s IN LISTS A_SIBLINGS)
    list(APPEND _args --sibling "${_s}")
  endforeach()
  if(A_EXPORT_CAPSULES)
    list(APPEND _args --export-capsules)
  endif()
  set(_stage_stubs "")
  if(A_STAGE_STUBS)
    set(_stage_stubs COMMAND "${CMAKE_COMMAND}" -E copy_directory "${_out}/pyi" "${STAGE_DIR}")
  endif()
  add_custom_command(
    OUTPUT "${_out}/wrpgen.stamp"
    BYPRODUCTS ${_shards} "${_out}/cpp/wrp_module.h" "${_out}/cpp/wrp_entry.h"
    COMMAND "${DOTNET_EXE}" "${DOTNET_OUT}/WrpGen/WrpGen.dll" ${_args}
    ${_stage_stubs}
    COMMAND "${CMAKE_COMMAND}" -E touch "${_out}/wrpgen.stamp"
    DEPENDS "${A_ASSEMBLY}" "${DOTNET_OUT}/WrpGen/WrpGen.dll" ${A_DEPENDS}
    COMMENT "WrpGen ${A_MODULE}"
    VERBATIM)
  add_custom_target(${target} DEPENDS "${_out}/wrpgen.stamp")
  # File dependencies on outputs of other directories do not order the
  # targets that make them; the target dependencies do.
  add_dependencies(${target} dotnet_wrpgen)
  if(A_ASSEMBLY_TARGET)
    add_dependencies(${target} ${A_ASSEMBLY_TARGET})
  endif()
  set(${A_NAME}_GEN_SHARDS ${_shards} PARENT_SCOPE)
  set(${A_NAME}_GEN_CPP "${_out}/cpp" PARENT_SCOPE)
  set(${A_NAME}_GEN_CS "${_out}/cs" PARENT_SCOPE)
endfunction()
