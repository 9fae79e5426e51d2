# The capture and app modules see the driver's headers, so they are built once for each driver that
# a program is linked with. The sources are the same.

# Adds the static libraries ${prefix}_capture and ${prefix}_app and the executable ${program}, all
# built against the library ${driver}.
function(halcyra_add_kinect_program prefix driver program)
  add_library(${prefix}_capture STATIC ${HALCYRA_CAPTURE_SOURCES})
  target_link_libraries(${prefix}_capture PUBLIC ${driver} halcyra_run_state opencv_core PRIVATE opencv_imgproc)

  add_library(${prefix}_app STATIC ${HALCYRA_APP_SOURCES})
  target_link_libraries(${prefix}_app PUBLIC ${prefix}_capture halcyra_awareness halcyra_dashboard
    halcyra_face_pipeline halcyra_probes halcyra_run_state PRIVATE opencv_highgui opencv_imgcodecs)

  add_executable(${program} ${HALCYRA_MAIN_SOURCE})
  target_link_libraries(${program} PRIVATE ${prefix}_app)
  set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
endfunction()
