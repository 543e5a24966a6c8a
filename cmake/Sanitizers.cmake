# -DVEMBRIX_SANITIZE="address,undefined" or "thread"
set(VEMBRIX_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(VEMBRIX_SANITIZE)
  # Every program takes them in. They are called before the sanitizer is ready, so they
  # are built without it.
  add_library(sanitizer_options OBJECT ${CMAKE_CURRENT_LIST_DIR}/SanitizerOptions.cpp)
  link_libraries(
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:$<TARGET_OBJECTS:sanitizer_options>>)

  add_compile_options(-fsanitize=${VEMBRIX_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${VEMBRIX_SANITIZE})
endif()
