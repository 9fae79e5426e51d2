# Chooses what searches pictures for faces: the engine in face_pipeline/haar or OpenCV's own
# classifier. Sets HALCYRA_FAST_FACE_SEARCH to TRUE for the engine and to FALSE for the classifier.
#
# The engine repeats OpenCV's arithmetic and finds the same faces sooner. A version of OpenCV that it
# was not compared with might compute something in another way, so the engine is used only with those
# that it was compared with; face_pipeline/haar/README.md tells what was compared. Patch releases
# count as versions of their own, since some have brought new code. The program always runs with the
# minor version that it was built with, as that is part of the names of OpenCV's libraries.
#
# What would be chosen for some version:
#   cmake -D OpenCV_VERSION=4.6.0 -P cmake/FaceSearch.cmake

set(HALCYRA_FACE_SEARCH auto CACHE STRING "Search for faces: auto, fast or opencv")
set_property(CACHE HALCYRA_FACE_SEARCH PROPERTY STRINGS auto fast opencv)

set(compared_versions 4.6.0 4.10.0)

if(NOT HALCYRA_FACE_SEARCH MATCHES "^(auto|fast|opencv)$")
  message(FATAL_ERROR
    "HALCYRA_FACE_SEARCH is \"${HALCYRA_FACE_SEARCH}\"; it must be auto, fast or opencv.")
endif()

set(chosen ${HALCYRA_FACE_SEARCH})
if(HALCYRA_FACE_SEARCH STREQUAL "auto")
  list(FIND compared_versions "${OpenCV_VERSION}" place)
  if(place GREATER_EQUAL 0)
    set(chosen fast)
  else()
    set(chosen opencv)
    list(JOIN compared_versions ", " compared)
    message(NOTICE
      "The fast search for faces was compared with OpenCV ${compared}, but not with the installed "
      "${OpenCV_VERSION}. Faces are therefore searched with OpenCV's own classifier, which takes up "
      "to ten times as long. To use the fast search, build and run the test haar_test; if it passes, "
      "configure with -DHALCYRA_FACE_SEARCH=fast.")
  endif()
endif()

set(HALCYRA_FAST_FACE_SEARCH FALSE)
if(chosen STREQUAL "fast")
  set(HALCYRA_FAST_FACE_SEARCH TRUE)
endif()
message(STATUS
  "Face search: ${chosen} (HALCYRA_FACE_SEARCH=${HALCYRA_FACE_SEARCH}, OpenCV ${OpenCV_VERSION})")
