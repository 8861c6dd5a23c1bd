# SPDX-License-Identifier: MIT
# Header-only packages of the build machine, for the cross build too: each gets a folder of its own
# in the build, because /usr/include as a whole would mix this machine's headers into a Windows build.
set(VELQUIN_HEADER_FOLDER /usr/include CACHE PATH "Where the header-only packages are installed")

# velquin_header_only(TARGET package...): a package is the name of its folder of headers (CLI).
# Such packages are much code that runs once, so the target is not optimised as far as others: that
# takes a third off the slowest files of the build.
function(velquin_header_only target)
  velquin_is_test(is_test)
  if(NOT is_test) # which have an optimisation of their own
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
  foreach(package ${ARGN})
    if(NOT IS_DIRECTORY ${VELQUIN_HEADER_FOLDER}/${package})
      message(FATAL_ERROR
        "${VELQUIN_HEADER_FOLDER}/${package} is missing; scripts/setup installs what the build needs")
    endif()
    set(folder ${CMAKE_BINARY_DIR}/header_only/${package})
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK ${VELQUIN_HEADER_FOLDER}/${package} ${folder}/${package} SYMBOLIC)
    target_include_directories(${target} SYSTEM PRIVATE ${folder})
  endforeach()
endfunction()
