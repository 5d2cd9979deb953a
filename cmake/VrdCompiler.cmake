# What every target of the project is compiled with: language level, visibility, warnings, checkers.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Installed libraries find each other beside themselves, and programs find them from their own folder.
set(CMAKE_INSTALL_RPATH "$ORIGIN")
file(RELATIVE_PATH VRD_LIBRARIES_FROM_PROGRAMS
     "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

option(VRD_WARNINGS_AS_ERRORS "A warning stops the build" OFF)
set(VRD_SANITIZERS "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
option(VRD_COVERAGE "Instrument for gcov" OFF)

add_library(vrd_build_flags INTERFACE)
target_compile_options(vrd_build_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<BOOL:${VRD_WARNINGS_AS_ERRORS}>:-Werror>
  $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
  # Paths of the build machine stay out of the binaries.
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)

if(VRD_SANITIZERS)
  add_compile_options(-fsanitize=${VRD_SANITIZERS} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VRD_SANITIZERS})
  if(VRD_SANITIZERS MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()

if(VRD_COVERAGE)
  # Threads count the same lines, and a count that two of them write at once comes out negative.
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

find_program(VRD_CCACHE ccache)
if(VRD_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${VRD_CCACHE}")
endif()
