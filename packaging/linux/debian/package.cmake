# The Debian package, which script/package makes by CPack.
string(TIMESTAMP VEMBRIX_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(VEMBRIX_PACKAGE_RELEASE 1)
# The licence in the form of a control file: each line behind a space, empty ones as a dot.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
string(REGEX MATCH "^[^\n]*\n\nCopyright \\(c\\) ([^\n]*)\n\n(.*[^\n])" licence "${licence}")
set(VEMBRIX_COPYRIGHT ${CMAKE_MATCH_1})
set(VEMBRIX_LICENCE " ${CMAKE_MATCH_2}")
string(REPLACE "\n\n" "\n.\n" VEMBRIX_LICENCE "${VEMBRIX_LICENCE}")
string(REPLACE "\n" "\n " VEMBRIX_LICENCE "${VEMBRIX_LICENCE}")
configure_file(debian/changelog.in debian/changelog.Debian @ONLY)
configure_file(debian/copyright.in debian/copyright @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md debian/changelog COPYONLY)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog
  ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.Debian
  ${CMAKE_CURRENT_BINARY_DIR}/debian/copyright
  DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/vembrix COMPONENT debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vembrix)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Vembrix contributors")
set(CPACK_PACKAGE_CONTACT "${VEMBRIX_CONTACT}")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL program debian)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/compress.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${VEMBRIX_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${VEMBRIX_WEBSITE_URL}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The text of the strip, and what opens the website.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-inter, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "names and colours for virtual desktops")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Vembrix shows the name of the current virtual desktop at the top right of the
screen, on the colours of that desktop, and in large letters on the desktop
itself on arrival. Its list of all desktops switches to them and renames them.

It works under X11 with every window manager that supports the EWMH standard.")
include(CPack)
