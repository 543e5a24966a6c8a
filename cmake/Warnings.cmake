add_compile_options(-Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 mistakes "text" + string for a copy of a string onto itself (its bug 105651).
  add_compile_options(-Wno-restrict)
endif()
