add_compile_options(-Wall -Wextra -Wpedantic -Werror)
