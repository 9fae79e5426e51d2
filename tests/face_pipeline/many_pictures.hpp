// Pictures for comparing two ways of recognising faces.
#pragma once

#include <vector>

#include <opencv2/core.hpp>

#include "face_pipeline/lbph_model.hpp"
#include "tests/support/photograph.hpp"

namespace halcyra {

// 160 x 160 noise of `levels` grey levels from `darkest` on. With few of them most pixels equal
// their neighbours.
inline cv::Mat noise_of_levels(int levels, int darkest, cv::RNG& random) {
  cv::Mat picture(160, 160, CV_8UC1);
  random.fill(picture, cv::RNG::UNIFORM, darkest, darkest + levels);
  return picture;
}

// 160 x 160, grey: crops of the photograph as faces are cut out, noise of few and of many levels
// at every brightness, and even pictures.
inline const std::vector<cv::Mat>& many_pictures() {
  static const std::vector<cv::Mat> kAll = [] {
    std::vector<cv::Mat> pictures;
    const cv::Mat picture = photograph();
    for (int side = 80; side < 300; side += 20) {
      for (int x = 0; x + side <= picture.cols; x += 90) {
        for (int y = 0; y + side <= picture.rows; y += 90) {
          pictures.push_back(make_probe(picture({x, y, side, side})));
        }
      }
    }
    cv::RNG random(7);
    for (const int levels : {1, 2, 3, 4, 16, 256}) {
      for (int darkest = 0; darkest + levels <= 256; darkest += 15) {
        pictures.push_back(noise_of_levels(levels, darkest, random));
      }
    }
    return pictures;
  }();
  return kAll;
}

}  // namespace halcyra
