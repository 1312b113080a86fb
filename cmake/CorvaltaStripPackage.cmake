# Run by CPack on the staged package: strips every ELF file as Debian's packaging does, the
# symbols a program or module does not need to run and the .comment and .note sections, which
# CMake's own stripping leaves.
find_program(strip NAMES strip REQUIRED)
file(GLOB_RECURSE staged LIST_DIRECTORIES false "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*")
foreach(file IN LISTS staged)
  file(READ "${file}" magic LIMIT 4 HEX)
  if(magic STREQUAL "7f454c46")
    execute_process(
      COMMAND ${strip} --strip-unneeded --remove-section=.comment --remove-section=.note "${file}"
      COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
