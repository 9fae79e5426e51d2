// Searches a picture with several cascades at once.
#pragma once

#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/cascade_search.hpp"
#include "face_pipeline/haar/image_pyramid.hpp"

namespace halcyra::haar {

// One pass over the picture.
struct SearchPass {
  CascadeSearch* cascade = nullptr;
  Facing facing = Facing::kAsIs;
  std::vector<float> scales;  // each at least 1, rising
};

// For each pass, every window that passes its cascade, before any grouping, in pixels of the
// picture: ordered by scale, then from top to bottom, then from left to right, as
// cv::CascadeClassifier finds them on one thread. The picture must have room for the window at each
// scale. For kMirrored, resize_mirrors_exactly must hold from the picture's width to that of
// each scale. Runs on OpenCV's threads. All passes search a part of a layer before the next part,
// so its sums come from memory once.
std::vector<std::vector<cv::Rect>> search_picture(ImagePyramid& pyramid,
                                                  const std::vector<SearchPass>& passes);

}  // namespace halcyra::haar
