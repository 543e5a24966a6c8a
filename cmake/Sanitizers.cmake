# -DVEMBRIX_SANITIZE="address,undefined" or "thread"
set(VEMBRIX_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(VEMBRIX_SANITIZE)
  add_compile_options(-fsanitize=${VEMBRIX_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${VEMBRIX_SANITIZE})
endif()
