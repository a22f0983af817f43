# Turns what was installed for the packages into what Debian wants: no search paths, as everything lies where the loader
# looks anyway, and compressed manual pages.
file(GLOB_RECURSE binaries ${CPACK_TEMPORARY_DIRECTORY}/*/usr/bin/* ${CPACK_TEMPORARY_DIRECTORY}/*/usr/lib/*.so.*)
foreach(binary IN LISTS binaries)
  if(NOT IS_SYMLINK ${binary})
    file(RPATH_REMOVE FILE ${binary})
  endif()
endforeach()

file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/*.1)
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
