# Finds the CPython 3.9 we build against and the installed .NET runtime, and
# stops with a message saying what is missing and where it was looked for.

set(ORVANE_PYTHON39_ROOT "" CACHE PATH "Root of the CPython 3.9 installation")
if(NOT ORVANE_PYTHON39_ROOT)
  execute_process(COMMAND pyenv root OUTPUT_VARIABLE _pyenv_root
                  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE _pyenv_rc)
  if(NOT _pyenv_rc EQUAL 0 OR NOT _pyenv_root)
    set(_pyenv_root "$ENV{HOME}/.pyenv")
  endif()
  set(ORVANE_PYTHON39_ROOT "${_pyenv_root}/versions/3.9.18" CACHE PATH "" FORCE)
endif()
set(PY39_EXE "${ORVANE_PYTHON39_ROOT}/bin/python3.9")
set(PY39_INCLUDE "${ORVANE_PYTHON39_ROOT}/include/python3.9")
set(PY39_LIB "${ORVANE_PYTHON39_ROOT}/lib/libpython3.9.so")
foreach(_f "${PY39_EXE}" "${PY39_INCLUDE}/Python.h" "${PY39_LIB}")
  if(NOT EXISTS "${_f}")
    message(FATAL_ERROR "CPython 3.9 is missing: ${_f} does not exist "
                        "(looked under ORVANE_PYTHON39_ROOT=${ORVANE_PYTHON39_ROOT}).")
  endif()
endforeach()
set(PY39_EXT_SUFFIX ".cpython-39-x86_64-linux-gnu.so")

find_program(DOTNET_EXE dotnet)
if(NOT DOTNET_EXE)
  message(FATAL_ERROR "The .NET SDK is missing: no 'dotnet' found on PATH ($ENV{PATH}).")
endif()

# The newest installed Microsoft.NETCore.App gives the runtime folder
# (netcore<major>.<minor>) and the libcoreclr.so we link to.
execute_process(COMMAND "${DOTNET_EXE}" --list-runtimes OUTPUT_VARIABLE _runtimes
                OUTPUT_STRIP_TRAILING_WHITESPACE)
string(REGEX MATCHALL "Microsoft\\.NETCore\\.App [0-9]+\\.[0-9]+\\.[0-9]+[^\n]*" _netcore "${_runtimes}")
set(_best "")
foreach(_line IN LISTS _netcore)
  string(REGEX MATCH "App ([0-9]+\\.[0-9]+\\.[0-9]+)[^ ]* \\[([^]]+)\\]" _m "${_line}")
  set(_ver "${CMAKE_MATCH_1}")
  set(_dir "${CMAKE_MATCH_2}/${CMAKE_MATCH_1}")
  if(_best STREQUAL "" OR _ver VERSION_GREATER _best)
    set(_best "${_ver}")
    set(NETCORE_FRAMEWORK_DIR "${_dir}")
  endif()
endforeach()
if(_best STREQUAL "" OR NOT EXISTS "${NETCORE_FRAMEWORK_DIR}/libcoreclr.so")
  message(FATAL_ERROR "No .NET runtime with libcoreclr.so found ('dotnet --list-runtimes' said: ${_runtimes}).")
endif()
string(REGEX MATCH "^([0-9]+)\\.([0-9]+)" _mm "${_best}")
set(NETCORE_VERSION "${_best}")
set(NETCORE_MAJOR_MINOR "${CMAKE_MATCH_1}.${CMAKE_MATCH_2}")
set(NETCORE_TFM "net${NETCORE_MAJOR_MINOR}")
message(STATUS "orvane: CPython 3.9 at ${ORVANE_PYTHON39_ROOT}; .NET ${NETCORE_VERSION} at ${NETCORE_FRAMEWORK_DIR}")
