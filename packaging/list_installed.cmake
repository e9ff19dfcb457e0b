# Run at the end of an installation: keeps a list of what it has installed, relative to the prefix, in the
# file ${list} there, for the uninstaller.
set(prefix "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
set(files "")
foreach(file IN LISTS CMAKE_INSTALL_MANIFEST_FILES)
  file(RELATIVE_PATH file "${CMAKE_INSTALL_PREFIX}" "${file}")
  string(APPEND files "${file}\n")
endforeach()
file(WRITE "${prefix}/${list}" "${files}")
message(STATUS "To uninstall: ${CMAKE_INSTALL_PREFIX}/libexec/kavo/uninstall")
