# Run at installation, with source set to the top of the repository and renderer to the program.
set(target $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX})

# install_packed(RESULT FILE): FILE, below the target, is the compressed text RESULT, without the time of packing.
function(install_packed text to)
  file(WRITE ${target}/${to} "${text}")
  execute_process(COMMAND gzip -9nf ${target}/${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(MAKE_DIRECTORY ${target}/bin)
file(CREATE_LINK ../lib/vaxel/vaxel-render ${target}/bin/vaxel-render SYMBOLIC)

execute_process(COMMAND ${source}/packaging/man-page ${renderer} OUTPUT_VARIABLE page COMMAND_ERROR_IS_FATAL ANY)
install_packed("${page}" share/man/man1/vaxel-render.1)
file(READ ${source}/CHANGELOG.md changes)
install_packed("${changes}" share/doc/vaxel-render/changelog)

set(icons ${target}/share/icons/hicolor)
file(MAKE_DIRECTORY ${icons}/scalable/mimetypes)
execute_process(COMMAND ${renderer} --area 100x100 -o ${icons}/scalable/mimetypes/text-x-vaxel.svg
  ${source}/src/resources/icon.dat COMMAND_ERROR_IS_FATAL ANY)
foreach(size 48 128)
  file(MAKE_DIRECTORY ${icons}/${size}x${size}/mimetypes)
  execute_process(COMMAND rsvg-convert -w ${size} -h ${size}
    -o ${icons}/${size}x${size}/mimetypes/text-x-vaxel.png ${icons}/scalable/mimetypes/text-x-vaxel.svg
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
