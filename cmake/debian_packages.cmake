# Debian packages: the libraries, what is needed to build with them, and the tool. `./dev package` makes and tries them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Corvane developers <developers@corvane.example>")
set(CPACK_PACKAGE_VENDOR Corvane)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL library development tools)
if(CORVANE_HAS_GTK)
  list(APPEND CPACK_COMPONENTS_ALL gtk)
endif()
if(CORVANE_HAS_QT)
  list(APPEND CPACK_COMPONENTS_ALL qt)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian_staging.cmake)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# The backend links the library out of this same build, of which no package is installed yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_CURRENT_BINARY_DIR}/corvane)
set(same_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

# CPack puts the project's own description above each of these.
function(corvane_debian_package component package section description)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${description}" PARENT_SCOPE)
endfunction()

corvane_debian_package(library libcorvane${CORVANE_ABI} libs
  "This is the library, with a backend for tests that needs no screen.")
corvane_debian_package(gtk libcorvane-gtk${CORVANE_ABI} libs
  "This is the backend for Linux devices with a touch screen, on GTK 4 and WebKitGTK.")
corvane_debian_package(qt libcorvane-qt${CORVANE_ABI} libs
  "This is the backend in which calls can take place, on Qt 6 and Qt WebEngine.")
corvane_debian_package(development libcorvane-dev libdevel
  "These are the headers, a CMake package and pkg-config files, for apps that embed it.")
corvane_debian_package(tools corvane-tools utils
  "The command corvane-product checks exported product records before an app hands them to the library.")

# Debian wants this in each package, and utf8proc's terms in each that contains it.
set(UTF8PROC_COPYRIGHT "")
if(EXISTS /usr/share/doc/libutf8proc-dev/copyright)
  file(READ /usr/share/doc/libutf8proc-dev/copyright UTF8PROC_COPYRIGHT)
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/copyright.in copyright @ONLY)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME} COMPONENT ${component})
endforeach()

set(CPACK_DEBIAN_GTK_PACKAGE_DEPENDS "libcorvane${CORVANE_ABI} ${same_version}")
set(CPACK_DEBIAN_QT_PACKAGE_DEPENDS "libcorvane${CORVANE_ABI} ${same_version}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libcorvane${CORVANE_ABI} ${same_version}")
if(CORVANE_HAS_GTK)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libcorvane-gtk${CORVANE_ABI} ${same_version}, libgtk-4-dev")
endif()
if(CORVANE_HAS_QT)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libcorvane-qt${CORVANE_ABI} ${same_version}, qt6-base-dev")
endif()
include(CPack)
