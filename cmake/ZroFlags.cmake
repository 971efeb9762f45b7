# The interface target zro_flags: language level, warnings and sanitizers of everything built here.
add_library(zro_flags INTERFACE)
target_compile_features(zro_flags INTERFACE cxx_std_20)
target_include_directories(zro_flags INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(zro_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Woverloaded-virtual -Wnon-virtual-dtor -Wcast-align -Wnull-dereference -Wformat=2
  -Wimplicit-fallthrough)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps in std::string operations that cannot be.
  target_compile_options(zro_flags INTERFACE -Wno-restrict)
endif()
if(ZRO_WARNINGS_AS_ERRORS)
  target_compile_options(zro_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # The constant name tables are built by the compiler; the default step count is too small for them.
  target_compile_options(zro_flags INTERFACE -fconstexpr-steps=20000000)
endif()

# Slabs hide use after free, so every sanitizer build goes without them.
if(ZRO_SANITIZE)
  list(JOIN ZRO_SANITIZE "," _zro_sanitizers)
  target_compile_options(zro_flags INTERFACE
    -fsanitize=${_zro_sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(zro_flags INTERFACE -fsanitize=${_zro_sanitizers})
  if(ZRO_SANITIZE_LIBRARY)
    list(JOIN ZRO_SANITIZE_LIBRARY "," _zro_library_sanitizers)
    target_link_options(zro_flags INTERFACE -fsanitize=${_zro_library_sanitizers})
  endif()
  target_compile_definitions(zro_flags INTERFACE ZRO_NO_SLABS)
endif()
if(ZRO_COVERAGE)
  target_compile_options(zro_flags INTERFACE --coverage)
  target_link_options(zro_flags INTERFACE --coverage)
endif()
if(CMAKE_INTERPROCEDURAL_OPTIMIZATION AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # The static library has to serve programs that are linked without link-time optimisation too.
  target_compile_options(zro_flags INTERFACE -ffat-lto-objects)
endif()
