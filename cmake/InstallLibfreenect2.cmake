# libfreenect2 is in no Debian release, so an installation carries its own copy: wherever the driver
# was built, the program goes on working when that folder has gone.
execute_process(COMMAND ${CMAKE_READELF} --dynamic ${HALCYRA_LIBFREENECT2}
  OUTPUT_VARIABLE dynamic_section COMMAND_ERROR_IS_FATAL ANY)
if(NOT dynamic_section MATCHES "Library soname: \\[([^]]+)\\]")
  # A static library, which the program contains.
  return()
endif()
set(soname ${CMAKE_MATCH_1})
file(REAL_PATH ${HALCYRA_LIBFREENECT2} library)

# A folder of its own in the program's one, where no other program finds the library.
set(libraries lib/halcyra-control-center/driver)
install(FILES ${library} DESTINATION ${libraries} RENAME ${soname})
install(CODE "
  if(CMAKE_INSTALL_DO_STRIP)
    execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-unneeded
      \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${libraries}/${soname}\")
  endif()")

file(RELATIVE_PATH from_program
  ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${libraries})
set_target_properties(halcyra-control-center halcyra-enroll halcyra-record PROPERTIES
  INSTALL_RPATH "\$ORIGIN/${from_program}")
