# Chooses what the program gets its frames from: an installed libfreenect2 or the virtual Kinect.
# Sets HALCYRA_CHOSEN_DRIVER to the library to link.

set(HALCYRA_KINECT_DRIVER auto CACHE STRING "Kinect driver: auto, libfreenect2 or virtual")
set_property(CACHE HALCYRA_KINECT_DRIVER PROPERTY STRINGS auto libfreenect2 virtual)

function(halcyra_find_libfreenect2 result)
  find_package(freenect2 QUIET)
  if(freenect2_FOUND)
    add_library(halcyra_libfreenect2 INTERFACE)
    target_include_directories(halcyra_libfreenect2 SYSTEM INTERFACE
      ${freenect2_INCLUDE_DIR} ${freenect2_INCLUDE_DIRS})
    target_link_libraries(halcyra_libfreenect2 INTERFACE ${freenect2_LIBRARIES})
    set(${result} halcyra_libfreenect2 PARENT_SCOPE)
    return()
  endif()
  pkg_check_modules(FREENECT2 QUIET IMPORTED_TARGET freenect2)
  if(FREENECT2_FOUND)
    set(${result} PkgConfig::FREENECT2 PARENT_SCOPE)
  else()
    set(${result} "" PARENT_SCOPE)
  endif()
endfunction()

if(HALCYRA_KINECT_DRIVER STREQUAL "virtual")
  set(HALCYRA_CHOSEN_DRIVER virtual_kinect)
elseif(HALCYRA_KINECT_DRIVER MATCHES "^(auto|libfreenect2)$")
  halcyra_find_libfreenect2(HALCYRA_CHOSEN_DRIVER)
  if(NOT HALCYRA_CHOSEN_DRIVER AND HALCYRA_KINECT_DRIVER STREQUAL "libfreenect2")
    message(FATAL_ERROR
      "HALCYRA_KINECT_DRIVER is libfreenect2, but no installed libfreenect2 was found: neither the "
      "CMake package freenect2 (set freenect2_DIR or CMAKE_PREFIX_PATH to where it lies) nor the "
      "pkg-config module freenect2.")
  elseif(NOT HALCYRA_CHOSEN_DRIVER)
    set(HALCYRA_CHOSEN_DRIVER virtual_kinect)
  endif()
else()
  message(FATAL_ERROR
    "HALCYRA_KINECT_DRIVER is \"${HALCYRA_KINECT_DRIVER}\"; it must be auto, libfreenect2 or virtual.")
endif()

# What starts the program reads the choice from the file, too.
if(HALCYRA_CHOSEN_DRIVER STREQUAL "virtual_kinect")
  file(WRITE ${CMAKE_BINARY_DIR}/kinect-driver "virtual\n")
  message(STATUS "Kinect driver: the virtual Kinect (HALCYRA_KINECT_DRIVER=${HALCYRA_KINECT_DRIVER})")
else()
  file(WRITE ${CMAKE_BINARY_DIR}/kinect-driver "libfreenect2\n")
  message(STATUS "Kinect driver: libfreenect2 (HALCYRA_KINECT_DRIVER=${HALCYRA_KINECT_DRIVER})")
endif()
