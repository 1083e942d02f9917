# Run by CPack when all files are staged: the installer, and a ZIP archive, sorted, whose files have the time of SOURCE_DATE_EPOCH and no
# other, so that the same sources give the same archive.
cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH parent)
set(archive ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip)
file(GLOB_RECURSE files RELATIVE ${parent} ${CPACK_TEMPORARY_DIRECTORY}/*)
list(JOIN files "\n" lines)
file(WRITE ${parent}/files.txt "${lines}\n")
string(TIMESTAMP time "%Y-%m-%dT%H:%M:%SZ" UTC)
execute_process(COMMAND touch -d ${time} ${files} WORKING_DIRECTORY ${parent} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND zip -qX9 ${archive} -@ INPUT_FILE ${parent}/files.txt WORKING_DIRECTORY ${parent}
  COMMAND_ERROR_IS_FATAL ANY)

set(source ${CPACK_TEMPORARY_DIRECTORY})
set(installer ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}-setup.exe)
set(version ${CPACK_PACKAGE_VERSION})
include(${CMAKE_CURRENT_LIST_DIR}/write_installer.cmake)
set(CPACK_EXTERNAL_BUILT_PACKAGES ${archive} ${installer})
