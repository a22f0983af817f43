# Language level, warnings, visibility and sanitizers, in one place for every target of the project.
set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Nobody replaces single functions of the library, so they may be inlined although they are exported.
add_compile_options(-fno-semantic-interposition)
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Kind of build" FORCE)
endif()

add_library(corvane_compile_options INTERFACE)
target_compile_options(corvane_compile_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wunused -Wnull-dereference -Wimplicit-fallthrough)
# Inside of somebody else's project, with a compiler that we have not seen, a new warning is none of our business.
if(PROJECT_IS_TOP_LEVEL)
  target_compile_options(corvane_compile_options INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees null dereferences, overlapping copies and uses of uninitialised values in its own library headers once it
  # has inlined them.
  target_compile_options(corvane_compile_options INTERFACE
    -Wno-null-dereference -Wno-maybe-uninitialized -Wno-restrict -Wno-stringop-overflow)
  # Its plain -Wshadow also refuses constructor arguments named like the members that they initialise.
  target_compile_options(corvane_compile_options INTERFACE -Wshadow=local)
else()
  target_compile_options(corvane_compile_options INTERFACE -Wshadow)
endif()

if(CORVANE_SANITIZE)
  add_compile_options(-fsanitize=${CORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${CORVANE_SANITIZE})
endif()
