# The Debian package of vaxel-render; scripts/package makes it. The program stands beside the libraries that it loads
# when they are needed, and looks for them behind the link in /usr/bin.
set(program lib/vaxel)
install(TARGETS vaxel-render RUNTIME DESTINATION ${program})
install(TARGETS vaxel-cairo vaxel-pango vaxel-pixbuf LIBRARY DESTINATION ${program})
set(docs share/doc/vaxel-render)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${docs})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${docs} RENAME copyright)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/vaxel-render.bash
  DESTINATION share/bash-completion/completions RENAME vaxel-render)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/vaxel-render.xml DESTINATION share/mime/packages)
# The manual page and the icon are made by the program that is packed.
install(CODE "set(source \"${PROJECT_SOURCE_DIR}\")\nset(renderer \"$<TARGET_FILE:vaxel-render>\")")
install(SCRIPT ${CMAKE_CURRENT_LIST_DIR}/install_debian.cmake)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vaxel-render)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "draws the dials of analog measuring instruments")
set(CPACK_PACKAGE_CONTACT "The Vaxel authors <vaxel@localhost>")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"vaxel-render turns a script in a small command language into the dial of a
 measuring instrument at true size, as PDF to print, SVG or PNG.")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
