# Writes the file installer, which installs what is staged in the folder source, of this version. The staged files have
# one time, by which the installer knows later which of them nobody has changed.
file(GLOB_RECURSE staged RELATIVE ${source} ${source}/*)
list(SORT staged)
set(lines "")
foreach(file IN LISTS staged)
  string(REPLACE "/" "\\" name ${file})
  # Users change scripts and templates; everything else belongs to the program.
  if(file MATCHES "\\.(dat|DaN|csv)$" OR file MATCHES "^examples/.*\\.txt$")
    string(APPEND lines "!insertmacro Changeable \"${file}\" \"${name}\"\n")
  else()
    string(APPEND lines "!insertmacro Fixed \"${file}\" \"${name}\"\n")
  endif()
endforeach()
file(GLOB_RECURSE entries RELATIVE ${source} LIST_DIRECTORIES true ${source}/*)
list(SORT entries)
set(made "")
set(removed "")
foreach(entry IN LISTS entries)
  if(IS_DIRECTORY ${source}/${entry})
    string(REPLACE "/" "\\" name ${entry})
    string(APPEND made "CreateDirectory \"$INSTDIR\\${name}\"\n")
    string(PREPEND removed "RMDir \"$INSTDIR\\${name}\"\n")
  endif()
endforeach()

set(lists ${installer}.lists)
file(MAKE_DIRECTORY ${lists})
file(WRITE ${lists}/files.nsh "${lines}")
file(WRITE ${lists}/folders.nsh "${made}")
file(WRITE ${lists}/no_folders.nsh "${removed}")
execute_process(COMMAND makensis -V2 -NOCD -INPUTCHARSET UTF8
  -DSOURCE=${source} -DVERSION=${version} -DOUTPUT=${installer} -DLISTS=${lists}
  -DICON=${CMAKE_CURRENT_LIST_DIR}/../src/resources/vaxel.ico
  ${CMAKE_CURRENT_LIST_DIR}/../packaging/installer.nsi COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE ${lists})
