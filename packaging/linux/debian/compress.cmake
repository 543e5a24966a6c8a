# Compresses what Debian wants compressed, without the name and the time of the file.
file(GLOB files
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/man1/*.1"
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/vembrix/changelog"
  "${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/vembrix/changelog.Debian")
if(NOT files)
  message(FATAL_ERROR "The package has no man page and no changelog")
endif()
execute_process(COMMAND gzip -9 --no-name ${files} COMMAND_ERROR_IS_FATAL ANY)
