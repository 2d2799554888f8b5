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

# A release checks its own buffers, stack and containers while it runs and gives an attacker no fixed place to aim at.
# The sanitizers do more than that, and don't go together with it.
set(QUILMO_HARDENED OFF)
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT QUILMO_SANITIZE)
  set(QUILMO_HARDENED ON)
endif()

if(QUILMO_HARDENED)
  include(CheckPIESupported)
  check_pie_supported(LANGUAGES CXX)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)

  # Some compilers define a lower level of _FORTIFY_SOURCE by themselves.
  target_compile_options(quilmo_config INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS)
  include(CheckCXXCompilerFlag)
  foreach(flag stack-protector-strong stack-clash-protection cf-protection)
    string(MAKE_C_IDENTIFIER "QUILMO_HAS_${flag}" has_flag)
    check_cxx_compiler_flag(-f${flag} ${has_flag})
    if(${has_flag})
      target_compile_options(quilmo_config INTERFACE -f${flag})
    endif()
  endforeach()
  target_link_options(quilmo_config INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
endif()
