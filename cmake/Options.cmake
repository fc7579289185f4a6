# Language level, warnings, visibility and sanitizers shared by everything that we compile.
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

set(BRAMBLECOR_SANITIZERS "" CACHE STRING "Sanitizers to build with, such as address,undefined")
option(BRAMBLECOR_WERROR "Treat warnings as errors" ON)

# Our own targets link this; it carries the project root as the include folder, so that every
# include names its folder: "host/calls.h", "model/recipient.h".
add_library(bramblecor_options INTERFACE)
target_compile_features(bramblecor_options INTERFACE cxx_std_20)
target_include_directories(bramblecor_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(bramblecor_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  $<$<BOOL:${BRAMBLECOR_WERROR}>:-Werror>)
if(BRAMBLECOR_SANITIZERS)
  target_compile_options(bramblecor_options INTERFACE
    -fsanitize=${BRAMBLECOR_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(bramblecor_options INTERFACE -fsanitize=${BRAMBLECOR_SANITIZERS})
endif()
