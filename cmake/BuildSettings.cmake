# Settings that every target of the project shares. Targets take them by linking
# printerslib_build_settings privately, so that nothing of it reaches a client.
add_library(printerslib_build_settings INTERFACE)

target_compile_options(printerslib_build_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual
  # Qt's category log macros are called without format arguments, which is C++20.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
  $<$<BOOL:${PRINTERSLIB_WARNINGS_AS_ERRORS}>:-Werror>)

target_compile_definitions(printerslib_build_settings INTERFACE
  QT_NO_KEYWORDS QT_DEPRECATED_WARNINGS)

# Text never changes its encoding unseen in the library and its tools. Tests may write literals.
add_library(printerslib_strict_text INTERFACE)
target_compile_definitions(printerslib_strict_text INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)

set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g1 -fno-omit-frame-pointer")
if(PRINTERSLIB_SANITIZE)
  add_compile_options(-fsanitize=${PRINTERSLIB_SANITIZE})
  add_link_options(-fsanitize=${PRINTERSLIB_SANITIZE})
  if(PRINTERSLIB_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()

# What is compiled with these options writes down what of it ran. The counters are atomic, as discovery
# runs a thread per port.
set(PRINTERSLIB_COVERAGE_OPTIONS "")
if(PRINTERSLIB_COVERAGE)
  set(PRINTERSLIB_COVERAGE_OPTIONS -O0 --coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

find_program(PRINTERSLIB_CCACHE ccache)
if(PRINTERSLIB_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${PRINTERSLIB_CCACHE}")
endif()
