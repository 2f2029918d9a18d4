# The Debian package that ./package makes.
include(GNUInstallDirs)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tervexdesk)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Tervex Desk maintainers <maintainers@tervexdesk.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "models of groundwater, heat and transport for tervex")
set(CPACK_PACKAGE_DESCRIPTION
"Makes, fills and checks models of the finite-difference simulator tervex
and writes its keyword input: grid, layers, property zones, boundaries,
wells, rock, tracers, periods and solver, in maps and in cross-sections,
in a window (tervexdesk) or from a shell (td).")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_SOURCE_DIR}/dist)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
