# SPDX-License-Identifier: MIT
# The three kinds of targets of this project, each with the same language level, warnings and
# include root. Programs and the library land in the build folder's bin/.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

set(VELQUIN_TESTS_FOLDER ${PROJECT_SOURCE_DIR}/tests)

find_package(Threads REQUIRED)

# Set by the presets native-asan and native-tsan, which the sanitizers' flags for the linker belong to.
set(VELQUIN_SANITIZE "" CACHE STRING "What clang watches: address,undefined or thread")

# velquin_is_test(RESULT): whether the calling CMakeLists.txt stands below tests/.
function(velquin_is_test result)
  cmake_path(IS_PREFIX VELQUIN_TESTS_FOLDER "${CMAKE_CURRENT_SOURCE_DIR}" is_test)
  set(${result} ${is_test} PARENT_SCOPE)
endfunction()

function(velquin_sanitize target)
  if(NOT VELQUIN_SANITIZE)
    return()
  endif()
  # What clang thinks of the text is the business of scripts/lint.
  target_compile_options(${target} PRIVATE -Wno-error)
  # The tests are watched as the rest is: of an inline function the linker may take their copy for all.
  target_compile_options(${target} PRIVATE
    -fsanitize=${VELQUIN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # The tests themselves take most of the time to compile, and had better compile fast.
  velquin_is_test(is_test)
  if(NOT is_test)
    target_compile_options(${target} PRIVATE -O1)
  endif()
endfunction()

function(velquin_compile_options target)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -ffunction-sections
                                           -fdata-sections)
  if(WIN32)
    target_compile_definitions(${target} PRIVATE _WIN32_WINNT=0x0601 WIN32_LEAN_AND_MEAN NOMINMAX)
  endif()
  velquin_sanitize(${target})
endfunction()

# velquin_library(NAME SOURCES file... [DEPENDS target...]): one folder's static library.
function(velquin_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  velquin_compile_options(${name})
  target_link_libraries(${name} PUBLIC ${arg_DEPENDS})
endfunction()

# velquin_program(NAME SOURCES file... [DEPENDS target...]): a program a person runs.
function(velquin_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  velquin_compile_options(${name})
  target_link_libraries(${name} PRIVATE ${arg_DEPENDS})
  target_link_options(${name} PRIVATE -Wl,--gc-sections $<$<CONFIG:Release>:-s>)
endfunction()
