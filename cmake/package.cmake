# The archive for Windows users; scripts/package makes it. Unpacked anywhere, Vaxel.exe starts from its own folder.
install(TARGETS Vaxel vaxel-render RUNTIME DESTINATION .)
install(CODE "set(source \"${PROJECT_SOURCE_DIR}\")")
install(SCRIPT ${CMAKE_CURRENT_LIST_DIR}/install_texts.cmake)

# CPack's own archives hold the files in the order in which the file system names them.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/write_archive.cmake)
set(CPACK_PACKAGE_FILE_NAME Vaxel-${PROJECT_VERSION}-windows)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
