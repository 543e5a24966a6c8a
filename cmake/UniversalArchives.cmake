# An archive of objects for two processors has no index at first. On a Mac ranlib
# mends that; elsewhere the archive is made by a program that knows how.
if(APPLE AND NOT CMAKE_HOST_APPLE)
  find_program(VEMBRIX_LIBTOOL NAMES llvm-libtool-darwin llvm-libtool-darwin-19 REQUIRED)
  mark_as_advanced(VEMBRIX_LIBTOOL)
  foreach(language CXX OBJCXX)
    set(CMAKE_${language}_CREATE_STATIC_LIBRARY
      "${VEMBRIX_LIBTOOL} -static -o <TARGET> <OBJECTS>")
  endforeach()
endif()
