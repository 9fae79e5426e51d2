# Where the parts of the program go on a Linux desktop. Everything finds the rest from its own place,
# so that any prefix works.
include(GNUInstallDirs)
find_program(HALCYRA_GZIP gzip REQUIRED)

execute_process(COMMAND date --utc --rfc-email --date=${HALCYRA_RELEASE_DATE}
  OUTPUT_VARIABLE HALCYRA_RELEASE_DATE_DEBIAN OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY)

set(own_files ${CMAKE_INSTALL_DATADIR}/halcyra-control-center)
set(own_programs ${CMAKE_INSTALL_LIBEXECDIR}/halcyra-control-center)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(generated ${PROJECT_BINARY_DIR}/packaging)

if(HALCYRA_DRIVER STREQUAL "libfreenect2")
  include(InstallLibfreenect2)
endif()

# The programs, what starts them, and the demonstration.
install(TARGETS halcyra-control-center halcyra-enroll halcyra-record RUNTIME)
install(PROGRAMS ${packaging}/launcher/halcyra TYPE BIN)
install(FILES ${packaging}/launcher/folder-readme.txt DESTINATION ${own_files})
install(PROGRAMS demo/demonstrate DESTINATION ${own_programs}/demonstration)
install(PROGRAMS demo/install/sonmerectl DESTINATION ${own_programs}/demonstration/install)
install(FILES demo/install/voice-directions.txt DESTINATION ${own_programs}/demonstration/install)
install(DIRECTORY ${PROJECT_BINARY_DIR}/demonstration/faces DESTINATION ${own_files}/demonstration)
if(NOT HALCYRA_PROGRAM_ON_VIRTUAL STREQUAL "halcyra-control-center")
  install(TARGETS ${HALCYRA_PROGRAM_ON_VIRTUAL} RUNTIME DESTINATION ${own_programs})
endif()

# The desktop's files.
set(id org.halcyra.ControlCenter)
configure_file(${packaging}/desktop/${id}.metainfo.xml.in ${generated}/${id}.metainfo.xml @ONLY)
install(FILES ${packaging}/desktop/${id}.desktop ${packaging}/desktop/${id}.Enrolment.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${generated}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${packaging}/desktop/${id}.svg DESTINATION ${icons}/scalable/apps)
foreach(size 16 24 32 48 64 128 256)
  install(FILES ${packaging}/desktop/icons/${size}.png
    DESTINATION ${icons}/${size}x${size}/apps RENAME ${id}.png)
endforeach()

# The device rule belongs to the system, which looks in lib/ whatever the name of the library folder.
install(FILES ${packaging}/udev/60-halcyra-kinect-v2.rules DESTINATION lib/udev/rules.d)

# Completions; bash and fish look for a file by the command's name.
set(completions ${packaging}/completions)
set(bash_completions ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
set(fish_completions ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
foreach(command halcyra-control-center halcyra)
  install(FILES ${completions}/halcyra-control-center.bash
    DESTINATION ${bash_completions} RENAME ${command})
  install(FILES ${completions}/halcyra-control-center.fish
    DESTINATION ${fish_completions} RENAME ${command}.fish)
endforeach()
foreach(tool halcyra-enroll halcyra-record)
  install(FILES ${completions}/${tool}.bash DESTINATION ${bash_completions} RENAME ${tool})
  install(FILES ${completions}/${tool}.fish DESTINATION ${fish_completions})
endforeach()
install(FILES ${completions}/_halcyra-control-center ${completions}/_halcyra-enroll
  ${completions}/_halcyra-record
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)

# Adds ${output}, the compressed ${input}, to the installed files of the folder `destination`. Without
# name and time in it, two builds of the same source give the same file.
function(halcyra_install_compressed input output destination)
  add_custom_command(OUTPUT ${output}
    COMMAND ${HALCYRA_GZIP} --best --no-name --stdout ${input} > ${output}
    DEPENDS ${input}
    VERBATIM)
  set_property(GLOBAL APPEND PROPERTY HALCYRA_COMPRESSED ${output})
  install(FILES ${output} DESTINATION ${destination})
endfunction()

foreach(page halcyra-control-center halcyra-enroll halcyra-record halcyra)
  configure_file(${packaging}/man/${page}.1.in ${generated}/${page}.1 @ONLY)
  halcyra_install_compressed(${generated}/${page}.1 ${generated}/${page}.1.gz
    ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()

# Documents, with the picture that one of them shows.
set(documents ${CMAKE_INSTALL_DATADIR}/doc/halcyra-control-center)
install(FILES
  docs/owner-samples.md docs/real-sensor.md docs/recordings.md docs/reliability.md
  docs/summary-line.md
  DESTINATION ${documents})
install(FILES docs/pictures/owner-samples.jpg DESTINATION ${documents}/pictures)
install(FILES ${packaging}/debian/copyright DESTINATION ${documents})
halcyra_install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${generated}/changelog.gz
  ${documents})
configure_file(${packaging}/debian/changelog.in ${generated}/changelog.Debian @ONLY)
halcyra_install_compressed(${generated}/changelog.Debian ${generated}/changelog.Debian.gz
  ${documents})

install(FILES ${packaging}/debian/lintian-overrides
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME halcyra-control-center)

get_property(compressed GLOBAL PROPERTY HALCYRA_COMPRESSED)
add_custom_target(compressed_documents ALL DEPENDS ${compressed})
