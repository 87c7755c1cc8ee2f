# Settings that every target of the project shares. Targets take them by linking
# printerslib_build_settings privately, so that nothing of it reaches a client.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()

add_library(printerslib_build_settings INTERFACE)

target_compile_options(printerslib_build_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
  -Wnon-virtual-dtor -Woverloaded-virtual
  # Qt's category log macros are called without format arguments, which is C++20.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
  # A symbol that is unique in the process would keep a library loaded until the process ends.
  $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
  $<$<BOOL:${PRINTERSLIB_WARNINGS_AS_ERRORS}>:-Werror>)

target_compile_definitions(printerslib_build_settings INTERFACE
  QT_NO_KEYWORDS QT_DEPRECATED_WARNINGS)

# A library uses what it defines, whatever a client defines under the same names. The addresses stay
# the same for both, as clients are compiled with -fPIC: one that isn't would have its own copy of an
# object, and its own address of a signal.
target_link_options(printerslib_build_settings INTERFACE
  $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:LINKER:-Bsymbolic>)

# What is shipped makes the most of what compiler, C library and loader have against overruns: guarded
# stacks, jumps only to where jumps go, checked buffers, and tables that nobody writes to after loading.
# What is compiled without optimisation has to take _FORTIFY_SOURCE back, as the C library warns of it.
set(shipped "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
if(PRINTERSLIB_COVERAGE)
  set(shipped 0)
endif()
foreach(option IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection=full
    -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "PRINTERSLIB_HAS${option}" has_option)
  check_cxx_compiler_flag(${option} ${has_option})
  if(${has_option})
    target_compile_options(printerslib_build_settings INTERFACE $<${shipped}:${option}>)
  endif()
endforeach()
target_compile_definitions(printerslib_build_settings INTERFACE $<${shipped}:_FORTIFY_SOURCE=2>)
target_link_options(printerslib_build_settings INTERFACE
  $<${shipped}:LINKER:-z,relro,-z,now,-z,noexecstack>)

# Text never changes its encoding unseen in the library and its tools. Tests may write literals.
add_library(printerslib_strict_text INTERFACE)
target_compile_definitions(printerslib_strict_text INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)

# The assertions of Qt and of the standard library are alive wherever faults are looked for. Qt's own
# targets switch them off outside of Debug.
add_compile_options($<$<CONFIG:Sanitize>:-UQT_NO_DEBUG>)
add_compile_definitions($<$<CONFIG:Debug,Sanitize>:_GLIBCXX_ASSERTIONS>)

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

# printerslib_read_more_pictures(TARGET SOURCE FORMAT...): the source of the target, the reader of
# pictures, takes these formats too.
function(printerslib_read_more_pictures target source)
  # A ";" would end the definition.
  list(JOIN ARGN "," formats)
  set_source_files_properties("${source}" TARGET_DIRECTORY ${target} PROPERTIES
    COMPILE_DEFINITIONS "PRINTERSLIB_MORE_PICTURE_FORMATS=\"${formats}\"")
endfunction()
