// Merges the hits of several cascade passes so that one face yields one detection.
#pragma once

#include <vector>

#include "face_pipeline/detection.hpp"

namespace halcyra {

// Of detections that overlap by at least 0.35 of their union, the largest claims the place and a
// frontal one takes it over. The result is ordered by the area of the claimants, largest first.
std::vector<Detection> dedupe(std::vector<Detection> detections);

}  // namespace halcyra
