# The system's GoogleTest; otherwise builds a release of it, as on a Mac that has only
# Apple's tools. -DFETCHCONTENT_SOURCE_DIR_GOOGLETEST=FOLDER takes the sources from a
# folder instead of the network.
find_package(GTest 1.12 QUIET)
if(NOT GTest_FOUND)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  include(FetchContent)
  FetchContent_Declare(googletest SYSTEM
    URL https://github.com/google/googletest/archive/refs/tags/v1.17.0.tar.gz
    URL_HASH SHA256=65fab701d9829d38cb77c14acdc431d2108bfdbf8979e40eb8ae567edf10b27c
    DOWNLOAD_EXTRACT_TIMESTAMP OFF)
  FetchContent_MakeAvailable(googletest)
  # Warnings of its sources are not for this project to fix.
  foreach(library IN ITEMS gtest gtest_main gmock gmock_main)
    target_compile_options(${library} PRIVATE -w)
  endforeach()
endif()
