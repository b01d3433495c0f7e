set(CMAKE_CXX_FLAGS_DEBUG "-g1")

# Warnings and sanitizers that every target of the project shares.
add_library(brelo_options INTERFACE)
target_compile_options(brelo_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
target_compile_definitions(brelo_options INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING
  BRELO_VERSION="${PROJECT_VERSION}")
# No library is loaded at start that nothing in a program calls.
target_link_options(brelo_options INTERFACE LINKER:--as-needed)
if(BRELO_SANITIZE)
  target_compile_options(brelo_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(brelo_options INTERFACE -fsanitize=address,undefined)
endif()
