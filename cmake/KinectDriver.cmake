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

# Sets `result` to whether a program that uses libfreenect2 through `target` compiles and links. What
# is left of an installation may lack its library or its headers.
function(halcyra_libfreenect2_works result target)
  set(${result} FALSE PARENT_SCOPE)
  get_target_property(folders ${target} INTERFACE_INCLUDE_DIRECTORIES)
  foreach(folder IN LISTS folders)
    if(NOT EXISTS "${folder}")
      return()
    endif()
  endforeach()
  try_compile(works
    SOURCE_FROM_CONTENT uses_libfreenect2.cpp "
      #include <libfreenect2/frame_listener_impl.h>
      #include <libfreenect2/libfreenect2.hpp>
      int main() {
        libfreenect2::SyncMultiFrameListener listener(libfreenect2::Frame::Color);
        return libfreenect2::Freenect2().enumerateDevices() + listener.hasNewFrame();
      }"
    LINK_LIBRARIES ${target}
    CXX_STANDARD 17
    NO_CACHE)
  set(${result} ${works} PARENT_SCOPE)
endfunction()

# Defines halcyra_driver_libfreenect2 if an installed libfreenect2 works, and sets
# HALCYRA_LIBFREENECT2 to the file of its library. What scripts/set-up-libfreenect2 has built goes
# before what the system has.
function(halcyra_find_libfreenect2)
  # What an earlier look found may belong to another freenect2_DIR.
  unset(freenect2_LIBRARY CACHE)
  unset(freenect2_INCLUDE_DIR CACHE)
  find_package(freenect2 QUIET HINTS ${PROJECT_SOURCE_DIR}/build/libfreenect2)
  if(freenect2_FOUND)
    add_library(halcyra_installed_freenect2 INTERFACE IMPORTED)
    target_include_directories(halcyra_installed_freenect2 INTERFACE ${freenect2_INCLUDE_DIR})
    target_link_libraries(halcyra_installed_freenect2 INTERFACE ${freenect2_LIBRARIES})
    halcyra_libfreenect2_works(works halcyra_installed_freenect2)
    if(works)
      add_library(halcyra_driver_libfreenect2 ALIAS halcyra_installed_freenect2)
      set(HALCYRA_LIBFREENECT2 ${freenect2_LIBRARY} PARENT_SCOPE)
      return()
    endif()
    message(NOTICE "The libfreenect2 of ${freenect2_DIR} is incomplete: no program can use it.")
    unset(freenect2_DIR CACHE)
  endif()

  # A library that was found is kept: ninja may configure again where PKG_CONFIG_PATH is not set.
  if(NOT EXISTS "${pkgcfg_lib_FREENECT2_freenect2}")
    unset(pkgcfg_lib_FREENECT2_freenect2 CACHE)
    unset(__pkg_config_checked_FREENECT2 CACHE)
  endif()
  pkg_check_modules(FREENECT2 QUIET IMPORTED_TARGET GLOBAL freenect2)
  if(NOT FREENECT2_FOUND)
    return()
  endif()
  halcyra_libfreenect2_works(works PkgConfig::FREENECT2)
  if(works)
    add_library(halcyra_driver_libfreenect2 ALIAS PkgConfig::FREENECT2)
    set(HALCYRA_LIBFREENECT2 ${pkgcfg_lib_FREENECT2_freenect2} PARENT_SCOPE)
  else()
    message(NOTICE "The libfreenect2 of ${FREENECT2_PREFIX} is incomplete: no program can use it.")
  endif()
endfunction()

# halcyra_program_name(RESULT PROGRAM DRIVER)
# The name of the program's build for the driver; that for the chosen one is the program's own.
function(halcyra_program_name result program driver)
  set(name ${program})
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
halcyra_program_name(HALCYRA_PROGRAM_ON_VIRTUAL halcyra-control-center virtual)

# What starts the program reads the choice from the file, too.
file(WRITE ${PROJECT_BINARY_DIR}/kinect-driver "${HALCYRA_DRIVER}\n")
set(chosen "libfreenect2")
if(HALCYRA_DRIVER STREQUAL "virtual")
  set(chosen "the virtual Kinect")
endif()
message(STATUS "Kinect driver: ${chosen} (HALCYRA_KINECT_DRIVER=${HALCYRA_KINECT_DRIVER})")
