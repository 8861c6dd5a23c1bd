# SPDX-License-Identifier: MIT
# What scripts/package puts into the zip: the component "package" of the installation, laid out as
# a user finds it. Needs no tool that the library itself does not need, until package_files is built.
include(CMakePackageConfigHelpers)

set(package_folder ${PROJECT_SOURCE_DIR}/cmake/package)
set(package_build ${CMAKE_BINARY_DIR}/package)
set(public_headers ${PROJECT_SOURCE_DIR}/include/telescope_api.h ${PROJECT_SOURCE_DIR}/include/velquin_util.h)
set(library_exports ${PROJECT_SOURCE_DIR}/library/api/velquin.def)

# The import library in the form that Microsoft's linker makes itself. GNU dlltool's form is another
# one, which that linker accepts but orders wrongly next to other import libraries.
set(microsoft_library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/velquin.lib)
add_custom_command(OUTPUT ${microsoft_library}
  COMMAND llvm-dlltool -m i386:x86-64 -d ${library_exports} -l ${microsoft_library}
  DEPENDS ${library_exports}
  COMMENT "Making velquin.lib" VERBATIM)
add_custom_target(velquin_microsoft_library DEPENDS ${microsoft_library})

# The pages for users and for authors of hosts; those that stay behind are for who changes the driver.
set(pages hosts.md protocol.md reference.md troubleshooting.md velquinctl.md windows.md)
set(page_script ${PROJECT_SOURCE_DIR}/scripts/lib/package_pages.py)
list(TRANSFORM pages PREPEND ${package_build}/docs/ OUTPUT_VARIABLE packaged_pages)
list(TRANSFORM pages PREPEND docs/)
list(TRANSFORM pages PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE page_sources)
set(packaged_changes ${package_build}/CHANGELOG.md)
add_custom_command(OUTPUT ${packaged_pages} ${packaged_changes}
  COMMAND python3 ${page_script} ${PROJECT_SOURCE_DIR} ${package_build}/docs ${pages}
  COMMAND python3 ${page_script} ${PROJECT_SOURCE_DIR} ${package_build} CHANGELOG.md
  DEPENDS ${page_script} ${page_sources} ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  COMMENT "Making the package's pages" VERBATIM)
add_custom_target(velquin_package_pages DEPENDS ${packaged_pages} ${packaged_changes})

add_custom_target(package_files)
add_dependencies(package_files velquin velquinctl velquin-sim velquin_microsoft_library
  velquin_package_pages)

configure_file(${package_folder}/README.txt.in ${package_build}/README.txt @ONLY NEWLINE_STYLE CRLF)
# Before 1.0 a new minor version may change the interface.
write_basic_package_version_file(${package_build}/velquin-config-version.cmake
  COMPATIBILITY SameMinorVersion)

install(TARGETS velquin velquinctl velquin-sim
  RUNTIME DESTINATION bin COMPONENT package
  ARCHIVE DESTINATION lib COMPONENT package)
install(FILES ${microsoft_library} DESTINATION lib COMPONENT package)
install(FILES ${public_headers} DESTINATION include COMPONENT package)
install(
  FILES ${package_folder}/velquin-config.cmake ${package_build}/velquin-config-version.cmake
  DESTINATION lib/cmake/velquin COMPONENT package)
# File by file: a person may have built an example where it lies.
foreach(example README.md c/CMakeLists.txt c/goto.c cpp/CMakeLists.txt cpp/goto.cpp)
  get_filename_component(folder ${example} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/examples/${example}
    DESTINATION examples/${folder} COMPONENT package)
endforeach()
install(FILES ${packaged_pages} DESTINATION docs COMPONENT package)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/images DESTINATION docs COMPONENT package
  FILES_MATCHING PATTERN *.png)
install(FILES ${package_build}/README.txt ${packaged_changes}
  DESTINATION . COMPONENT package)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION . RENAME LICENSE.txt COMPONENT package)

# Parts of these are inside of the programs, and their licences ask for a copy beside them.
set(foreign_licences /usr/share/doc)
install(FILES ${foreign_licences}/libcli11-dev/copyright
  DESTINATION licenses RENAME CLI11.txt COMPONENT package)
install(FILES ${foreign_licences}/mingw-w64-x86-64-dev/copyright
  DESTINATION licenses RENAME mingw-w64.txt COMPONENT package)
