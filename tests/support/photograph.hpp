// The photograph of a person that tests look for faces in.
#pragma once

#include <stdexcept>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra {

// 512 x 512, BGR, one frontal face of about 100 pixels. Throws std::runtime_error when the file is
// not there.
inline cv::Mat color_photograph() {
  cv::Mat picture = cv::imread(HALCYRA_TEST_DATA "/astronaut.png", cv::IMREAD_COLOR);
  if (picture.empty()) throw std::runtime_error("no photograph in " HALCYRA_TEST_DATA);
  return picture;
}

// The same in grey. Every caller gets a copy of its own. Not read as grey, which gives other pixels
// with other versions of libpng.
inline cv::Mat photograph() {
  static const cv::Mat colors = color_photograph();
  cv::Mat grey;
  cv::cvtColor(colors, grey, cv::COLOR_BGR2GRAY);
  return grey;
}

// The box that a face detector would give the face in it.
inline cv::Rect photographed_face() { return {170, 60, 108, 108}; }

}  // namespace halcyra
