# Every library that the project uses is a Debian package; `./dev setup` installs them.
find_package(PkgConfig REQUIRED)
find_package(simdjson REQUIRED)
pkg_check_modules(uriparser REQUIRED IMPORTED_TARGET liburiparser)

# The static archive is small and position independent, and spares host apps a dependency.
find_library(UTF8PROC_ARCHIVE libutf8proc.a REQUIRED)
add_library(corvane_utf8proc STATIC IMPORTED)
set_target_properties(corvane_utf8proc PROPERTIES IMPORTED_LOCATION ${UTF8PROC_ARCHIVE})

# What the core is made with; nothing of it shows in its headers.
set(CORVANE_PRIVATE_LIBRARIES simdjson::simdjson PkgConfig::uriparser corvane_utf8proc)

# The demo's and the tests' own servers are made with this, whatever toolkit shows their pages.
pkg_check_modules(soup IMPORTED_TARGET libsoup-3.0)

set(CORVANE_HAS_GTK OFF)
if(NOT CORVANE_GTK STREQUAL "OFF")
  pkg_check_modules(gtk_stack IMPORTED_TARGET gtk4>=4.8 webkitgtk-6.0)
  # The same without the engine, for host apps; its name is also that of the installed package.
  pkg_check_modules(corvane_gtk4 IMPORTED_TARGET gtk4>=4.8)
  if(gtk_stack_FOUND AND soup_FOUND)
    set(CORVANE_HAS_GTK ON)
  elseif(CORVANE_GTK STREQUAL "ON")
    message(FATAL_ERROR "CORVANE_GTK=ON, but GTK 4, WebKitGTK 6.0 or libsoup 3 was not found")
  else()
    message(STATUS "The GTK backend is left out: GTK 4, WebKitGTK 6.0 or libsoup 3 was not found")
  endif()
endif()

set(CORVANE_HAS_QT OFF)
if(NOT CORVANE_QT STREQUAL "OFF")
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets Quick QuickWidgets WebEngineWidgets)
  if(TARGET Qt6::WebEngineWidgets AND TARGET Qt6::QuickWidgets AND TARGET Qt6::GuiPrivate AND soup_FOUND)
    set(CORVANE_HAS_QT ON)
  elseif(CORVANE_QT STREQUAL "ON")
    message(FATAL_ERROR "CORVANE_QT=ON, but Qt 6.4, its private headers, Qt WebEngine or libsoup 3 was not found")
  else()
    message(STATUS "The Qt backend is left out: Qt 6.4, its private headers, Qt WebEngine or libsoup 3 was not found")
  endif()
endif()

if(CORVANE_HAS_GTK)
  pkg_check_modules(xtst IMPORTED_TARGET xtst x11)
  if(NOT xtst_FOUND)
    message(STATUS "The tests with a mouse, and the demo's tour of the floating window, need Wayland: libXtst was not found")
  endif()
endif()
if(CORVANE_TESTS)
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()
if(CORVANE_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()
