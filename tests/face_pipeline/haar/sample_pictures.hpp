// Grey pictures of many kinds, to be searched.
#pragma once

#include <algorithm>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/support/photograph.hpp"

namespace halcyra::haar {

// The photograph's head alone, 180 x 180: a smaller picture is searched faster.
inline cv::Mat portrait() { return photograph()(cv::Rect(130, 20, 180, 180)); }

inline cv::Mat mirror_image(const cv::Mat& picture) {
  cv::Mat flipped;
  cv::flip(picture, flipped, 1);
  return flipped;
}

// Levels from `least` to `most`.
inline cv::Mat noise(const cv::Size& size, int least, int most, cv::RNG& random) {
  cv::Mat picture(size, CV_8U);
  random.fill(picture, cv::RNG::UNIFORM, least, most + 1);
  return picture;
}

// Smoothed coarse noise, which has shapes of all sizes.
inline cv::Mat clouds(const cv::Size& size, cv::RNG& random) {
  cv::Mat picture;
  cv::resize(noise({size.width / 9 + 2, size.height / 9 + 2}, 0, 255, random), picture, size, 0, 0,
             cv::INTER_CUBIC);
  return picture;
}

inline cv::Mat gradient(const cv::Size& size) {
  cv::Mat picture(size, CV_8U);
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) {
      picture.at<uchar>(y, x) =
          cv::saturate_cast<uchar>(255 * (x + y) / (size.width + size.height));
    }
  }
  return picture;
}

inline cv::Mat checkerboard(const cv::Size& size, int cell) {
  cv::Mat picture(size, CV_8U);
  for (int y = 0; y < size.height; ++y) {
    for (int x = 0; x < size.width; ++x) {
      picture.at<uchar>(y, x) = (x / cell + y / cell) % 2 == 0 ? 0 : 255;
    }
  }
  return picture;
}

// The photographed face, randomly resized and rotated, in front of clouds.
inline cv::Mat face_before_clouds(const cv::Size& size, cv::RNG& random) {
  cv::Mat picture = clouds(size, random);
  const cv::Mat face = photograph()(photographed_face() + cv::Size(20, 20));
  const double scale = random.uniform(0.25, 1.0) * std::min(size.width, size.height) / 128.0;
  const cv::Point2f centre(64.0F, 64.0F);
  cv::Mat turn = cv::getRotationMatrix2D(centre, random.uniform(-20.0, 20.0), scale);
  turn.at<double>(0, 2) += random.uniform(0.0, 1.0) * size.width - 64.0;
  turn.at<double>(1, 2) += random.uniform(0.0, 1.0) * size.height - 64.0;
  cv::warpAffine(face, picture, turn, size, cv::INTER_LINEAR, cv::BORDER_TRANSPARENT);
  return picture;
}

inline cv::Mat of_random_kind(const cv::Size& size, cv::RNG& random) {
  const int grey = random.uniform(0, 256);
  switch (random.uniform(0, 12)) {
    case 0:
      return noise(size, 0, 255, random);
    case 1:
      return noise(size, grey, std::min(grey + 3, 255), random);
    case 2:
      return gradient(size);
    case 3:
      return checkerboard(size, random.uniform(1, 40));
    case 4:
      return clouds(size, random) * (1.0 / random.uniform(1, 40));
    case 5:
      return cv::Mat(size, CV_8U, cv::Scalar(grey));
    case 6:
      return clouds(size, random) > 128;
    default:
      return face_before_clouds(size, random);
  }
}

// The same pixels as a part of a larger picture, so that the rows are not contiguous in memory.
inline cv::Mat as_part_of_larger(const cv::Mat& picture, cv::RNG& random) {
  cv::Mat larger = noise(picture.size() + cv::Size(13, 9), 0, 255, random);
  cv::Mat part = larger(cv::Rect(cv::Point(7, 5), picture.size()));
  picture.copyTo(part);
  return part;
}

}  // namespace halcyra::haar
