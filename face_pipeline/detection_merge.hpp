// Merges the hits of several cascade passes, so that each face gives one detection.
#pragma once

#include <vector>

#include "face_pipeline/detection.hpp"

namespace halcyra {

// Takes detections from the largest to the smallest (of equal areas, the better pose first). One
// that overlaps no kept detection is kept; overlapping means that the intersection is at least 0.35
// of the union. Otherwise it replaces the first that it overlaps if its pose is better: frontal is
// better than a profile. The result is in the order in which places were first taken, so a
// detection that replaced a larger one stands in that one's place.
std::vector<Detection> dedupe(std::vector<Detection> detections);

}  // namespace halcyra
