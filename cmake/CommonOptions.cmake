# Warnings, hardening and sanitizers, once, for every target: link veltramoor_options.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

set(VELTRAMOOR_SANITIZE "" CACHE STRING "Sanitizers to build with: empty, 'address,undefined', 'thread' or 'fuzzer'")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # What one preset has compiled serves another one with the same options, wherever it is built. What
  # a file depends on is taken from the compiler's own list: finding it by preprocessing first cost a
  # cold build a fifth of its time.
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env CCACHE_NOHASHDIR=1 CCACHE_DEPEND=1
    "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_SLOPPINESS=pch_defines,time_macros
    "${CCACHE_PROGRAM}")
endif()

# Errors in the presets that developers test with (CMAKE_COMPILE_WARNING_AS_ERROR), and nowhere else:
# what a newer compiler has to say must not keep anybody from building.
set(veltramoor_warnings
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Wold-style-cast -Woverloaded-virtual -Wformat=2)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 reports moves of std::string as restrict overlaps, and inlined optionals and vectors as
  # uninitialised or overflowing reads (GCC bugs 105329, 105562, 105580).
  list(APPEND veltramoor_warnings
    -Wno-restrict -Wno-maybe-uninitialized -Wno-array-bounds -Wno-stringop-overflow
    -Wno-stringop-overread)
endif()

add_library(veltramoor_options INTERFACE)
target_compile_options(veltramoor_options INTERFACE ${veltramoor_warnings} -fstack-protector-strong)

if(VELTRAMOOR_SANITIZE)
  add_compile_options(-fsanitize=${VELTRAMOOR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${VELTRAMOOR_SANITIZE})
  if(VELTRAMOOR_FUZZ)
    # Let the fuzzer see the branches of the code under test, not only those of the targets.
    add_compile_options(-fsanitize=fuzzer-no-link)
  endif()
else()
  target_compile_definitions(veltramoor_options INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2> _GLIBCXX_ASSERTIONS)
  # What is linked in and never called costs memory: its pages are mapped with those beside it.
  add_compile_options(-ffunction-sections -fdata-sections)
  # Relocations, of which QML's tools make thousands, take a twelfth of their room when packed.
  add_link_options(-Wl,-z,relro,-z,now -Wl,--gc-sections -Wl,-z,pack-relative-relocs)
endif()
