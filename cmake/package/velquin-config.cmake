# SPDX-License-Identifier: MIT
# find_package(velquin CONFIG) gives
#   velquin::velquin  velquin.dll through its import library, with the headers
#   velquin::headers  the headers alone, for a host that loads velquin.dll at run time
# Everything is found from where this file lies, so the folder may be moved as a whole.
if(NOT WIN32)
  set(velquin_FOUND FALSE)
  set(velquin_NOT_FOUND_MESSAGE "velquin.dll is a library for Windows, not ${CMAKE_SYSTEM_NAME}.")
  return()
endif()
if(TARGET velquin::velquin)
  return()
endif()

get_filename_component(_velquin_root "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

# Microsoft's linker and its likes read velquin.lib, GNU's and its likes libvelquin.dll.a. Clang may
# work with either, and tells which compiler it stands for.
if(MSVC OR "${CMAKE_CXX_SIMULATE_ID}" STREQUAL "MSVC" OR "${CMAKE_C_SIMULATE_ID}" STREQUAL "MSVC")
  set(_velquin_import "${_velquin_root}/lib/velquin.lib")
else()
  set(_velquin_import "${_velquin_root}/lib/libvelquin.dll.a")
endif()

set(_velquin_files "${_velquin_root}/bin/velquin.dll" "${_velquin_import}"
                   "${_velquin_root}/include/telescope_api.h")
foreach(_velquin_file IN LISTS _velquin_files)
  if(NOT EXISTS "${_velquin_file}")
    set(velquin_FOUND FALSE)
    set(velquin_NOT_FOUND_MESSAGE "${_velquin_file} is missing; unpack the whole zip again.")
    return()
  endif()
endforeach()

add_library(velquin::headers INTERFACE IMPORTED)
set_target_properties(velquin::headers PROPERTIES
  INTERFACE_INCLUDE_DIRECTORIES "${_velquin_root}/include")

add_library(velquin::velquin SHARED IMPORTED)
set_target_properties(velquin::velquin PROPERTIES
  IMPORTED_LOCATION "${_velquin_root}/bin/velquin.dll"
  IMPORTED_IMPLIB "${_velquin_import}"
  INTERFACE_LINK_LIBRARIES velquin::headers)

unset(_velquin_root)
unset(_velquin_import)
unset(_velquin_files)
unset(_velquin_file)
