# Run at installation, with source set to the top of the repository: what the user of the programs reads and edits.
set(target $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX})

# Windows users open these with editors that want CR LF.
function(install_text from to)
  file(READ ${source}/${from} text)
  string(REGEX REPLACE "\r*\n" "\r\n" text "${text}")
  file(WRITE ${target}/${to} "${text}")
endfunction()

foreach(language fr en es)
  install_text(src/resources/templates/Vaxel_${language}.DaN Vaxel_${language}.DaN)
endforeach()
install_text(src/resources/templates/Vaxel_fr.DaN Vaxel.DaN)
install_text(examples/vu-meter.dat Vaxel.dat)
install_text(LICENSE LICENSE.txt)
install_text(CHANGELOG.md CHANGELOG.txt)

file(GLOB templates RELATIVE ${source} ${source}/src/resources/templates/*.dat)
foreach(template IN LISTS templates)
  cmake_path(GET template FILENAME name)
  install_text(${template} templates/${name})
endforeach()

file(GLOB_RECURSE examples RELATIVE ${source} ${source}/examples/*)
foreach(example IN LISTS examples)
  if(example MATCHES "\\.(png|jpg|gif|bmp)$")
    cmake_path(GET example PARENT_PATH folder)
    file(INSTALL ${source}/${example} DESTINATION ${target}/${folder})
  else()
    install_text(${example} ${example})
  endif()
endforeach()

# The pages of the manual, which the help commands open. Readers of the archive print the chapter that they need.
execute_process(COMMAND ${CMAKE_COMMAND} -E env VAXEL_MANUAL_FOLDER=${target}/docs ${source}/scripts/manual --no-pdf
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
