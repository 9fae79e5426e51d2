# Chooses what the program gets its frames from: an installed libfreenect2 or the virtual Kinect.
# Sets
#   HALCYRA_DRIVER              the program's own: libfreenect2 or virtual
#   HALCYRA_DRIVERS             all that a program is built for; the library to link with is
#                               halcyra_driver_ and the name. The demonstration and the tests run on
#                               the virtual Kinect, whichever driver the program has; the tests also
#                               on ignoring_timeout, whose waiting takes as long as the sensor does.
#   HALCYRA_PROGRAM_ON_VIRTUAL  the program that runs on the virtual Kinect

set(HALCYRA_KINECT_DRIVER auto CACHE STRING "Kinect driver: auto, libfreenect2 or virtual")
set_property(CACHE HALCYRA_KINECT_DRIVER PROPERTY STRINGS auto libfreenect2 virtual)

function(halcyra_find_libfreenect2)
  find_package(freenect2 QUIET)
  if(freenect2_FOUND)
    add_library(halcyra_driver_libfreenect2 INTERFACE)
    target_include_directories(halcyra_driver_libfreenect2 SYSTEM INTERFACE
      ${freenect2_INCLUDE_DIR} ${freenect2_INCLUDE_DIRS})
    target_link_libraries(halcyra_driver_libfreenect2 INTERFACE ${freenect2_LIBRARIES})
    return()
  endif()
  pkg_check_modules(FREENECT2 QUIET IMPORTED_TARGET freenect2)
  if(FREENECT2_FOUND)
    add_library(halcyra_driver_libfreenect2 INTERFACE)
    target_link_libraries(halcyra_driver_libfreenect2 INTERFACE PkgConfig::FREENECT2)
  endif()
endfunction()

# halcyra_program_name(RESULT DRIVER)
function(halcyra_program_name result driver)
  set(name halcyra-control-center)
  if(NOT driver STREQUAL HALCYRA_DRIVER)
    string(APPEND name -on-${driver})
  endif()
  set(${result} ${name} PARENT_SCOPE)
endfunction()

add_library(halcyra_driver_virtual ALIAS virtual_kinect)
set(HALCYRA_DRIVER virtual)
if(HALCYRA_KINECT_DRIVER MATCHES "^(auto|libfreenect2)$")
  halcyra_find_libfreenect2()
  if(TARGET halcyra_driver_libfreenect2)
    set(HALCYRA_DRIVER libfreenect2)
  elseif(HALCYRA_KINECT_DRIVER STREQUAL "libfreenect2")
    message(FATAL_ERROR
      "HALCYRA_KINECT_DRIVER is libfreenect2, but no installed libfreenect2 was found: neither the "
      "CMake package freenect2 (set freenect2_DIR or CMAKE_PREFIX_PATH to where it lies) nor the "
      "pkg-config module freenect2.")
  endif()
elseif(NOT HALCYRA_KINECT_DRIVER STREQUAL "virtual")
  message(FATAL_ERROR
    "HALCYRA_KINECT_DRIVER is \"${HALCYRA_KINECT_DRIVER}\"; it must be auto, libfreenect2 or virtual.")
endif()

set(HALCYRA_DRIVERS ${HALCYRA_DRIVER} virtual)
if(HALCYRA_BUILD_TESTS)
  add_library(halcyra_driver_ignoring_timeout ALIAS virtual_kinect_ignoring_timeout)
  list(APPEND HALCYRA_DRIVERS ignoring_timeout)
endif()
list(REMOVE_DUPLICATES HALCYRA_DRIVERS)
halcyra_program_name(HALCYRA_PROGRAM_ON_VIRTUAL virtual)

# What starts the program reads the choice from the file, too.
file(WRITE ${PROJECT_BINARY_DIR}/kinect-driver "${HALCYRA_DRIVER}\n")
set(chosen "libfreenect2")
if(HALCYRA_DRIVER STREQUAL "virtual")
  set(chosen "the virtual Kinect")
endif()
message(STATUS "Kinect driver: ${chosen} (HALCYRA_KINECT_DRIVER=${HALCYRA_KINECT_DRIVER})")
