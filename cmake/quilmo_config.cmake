# What every target of the project is compiled with: one interface target.
add_library(quilmo_config INTERFACE)

target_compile_definitions(quilmo_config INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH QT_NO_KEYWORDS
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)

target_compile_options(quilmo_config INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wcast-qual
  -Wformat=2 -Wextra-semi)

if(QUILMO_WERROR)
  target_compile_options(quilmo_config INTERFACE -Werror)
endif()

if(QUILMO_SANITIZE)
  target_compile_definitions(quilmo_config INTERFACE _GLIBCXX_ASSERTIONS)
  target_compile_options(quilmo_config INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quilmo_config INTERFACE -fsanitize=address,undefined)
endif()
