# What `cmake --install` and CPack do: the libraries with their headers, a CMake package, pkg-config files, the tool with
# its manual page and completions for shells.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/corvane)

# Installs a library in its component, and what is needed to build with it in the component for developers.
function(corvane_install_library target component)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  install(TARGETS ${target} EXPORT ${target}-targets
    LIBRARY COMPONENT ${component} NAMELINK_COMPONENT development
    FILE_SET HEADERS COMPONENT development)
  install(EXPORT ${target}-targets NAMESPACE corvane:: DESTINATION ${package_dir} COMPONENT development)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${target}.pc.in ${target}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${target}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()

# pkg-config finds the prefix from where its file lies, so an installed tree can be moved.
file(RELATIVE_PATH CORVANE_PREFIX_FROM_PKGCONFIG
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})

corvane_install_library(corvane library)
if(CORVANE_HAS_GTK)
  corvane_install_library(corvane-gtk gtk)
endif()
if(CORVANE_HAS_QT)
  corvane_install_library(corvane-qt qt)
endif()

if(TARGET corvane-product)
  # It has the library's code in itself. What else it links is found by this path where all of it has one prefix.
  file(RELATIVE_PATH libraries_from_tool ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(corvane-product PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries_from_tool}")
  install(TARGETS corvane-product RUNTIME COMPONENT tools)
  configure_file(${PROJECT_SOURCE_DIR}/tools/corvane-product.1.in corvane-product.1 @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/corvane-product.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/tools/shell/corvane-product.bash RENAME corvane-product
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/tools/shell/_corvane-product
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/tools/shell/corvane-product.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tools)
endif()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/corvane-config.cmake.in corvane-config.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
# Until version 1 a new minor version may change the interface.
write_basic_package_version_file(corvane-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/corvane-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/corvane-config-version.cmake
  DESTINATION ${package_dir} COMPONENT development)

if(PROJECT_IS_TOP_LEVEL)
  include(debian_packages)
endif()
