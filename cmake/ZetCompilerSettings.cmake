# Warnings live on a target of our own that is never exported.
add_library(zet_warnings INTERFACE)
target_compile_options(zet_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
  -Woverloaded-virtual -Wdouble-promotion
  $<$<BOOL:${ZET_WARNINGS_AS_ERRORS}>:-Werror>)

if(ZET_SANITIZE)
  add_compile_options(-fsanitize=${ZET_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZET_SANITIZE})
  if(ZET_SANITIZE MATCHES "undefined")
    # Division by zero of doubles is IEEE arithmetic here, and part of what the language gives.
    add_compile_options(-fsanitize=float-cast-overflow)
  endif()
endif()
