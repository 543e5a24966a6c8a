# An archive of objects for two processors is created without an index. On a Mac ranlib
# adds it; elsewhere another program creates the archive.
if(APPLE AND NOT CMAKE_HOST_APPLE)
  find_program(VEMBRIX_LIBTOOL NAMES llvm-libtool-darwin llvm-libtool-darwin-19 REQUIRED)
  mark_as_advanced(VEMBRIX_LIBTOOL)
  foreach(language CXX OBJCXX)
    set(CMAKE_${language}_CREATE_STATIC_LIBRARY
      "${VEMBRIX_LIBTOOL} -static -o <TARGET> <OBJECTS>")
  endforeach()
endif()
