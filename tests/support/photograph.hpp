// The photograph of a person that tests look for faces in.
#pragma once

#include <stdexcept>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

namespace halcyra {

// 512 x 512, BGR, one frontal face of about 100 pixels. Throws std::runtime_error when the file is
// not there.
inline cv::Mat color_photograph() {
  cv::Mat picture = cv::imread(HALCYRA_TEST_DATA "/astronaut.png", cv::IMREAD_COLOR);
  if (picture.empty()) throw std::runtime_error("no photograph in " HALCYRA_TEST_DATA);
  return picture;
}

// The same in grey. Every caller gets a copy of its own.
inline cv::Mat photograph() {
  static const cv::Mat picture =
      cv::imread(HALCYRA_TEST_DATA "/astronaut.png", cv::IMREAD_GRAYSCALE);
  if (picture.empty()) throw std::runtime_error("no photograph in " HALCYRA_TEST_DATA);
  return picture.clone();
}

// The box that a face detector would give the face in it.
inline cv::Rect photographed_face() { return {170, 60, 108, 108}; }

}  // namespace halcyra
