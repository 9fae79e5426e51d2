// The photograph that the tests look for faces in.
#pragma once

#include <string>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

namespace halcyra {

// 512 x 512, grey, one frontal face of about 100 pixels. A copy of its own for each caller.
inline cv::Mat photograph() {
  static const cv::Mat picture =
      cv::imread(std::string(HALCYRA_TEST_DATA) + "/astronaut.png", cv::IMREAD_GRAYSCALE);
  return picture.clone();
}

// Where the face in it is, as a face detector would frame it.
inline cv::Rect photographed_face() { return {170, 60, 108, 108}; }

}  // namespace halcyra
