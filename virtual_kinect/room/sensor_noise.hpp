// The noise of the sensor's pictures: drawn once, then looked up at places that differ from set to
// set.
#pragma once

#include <cstdint>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra::virtual_kinect::room {

class SensorNoise {
 public:
  explicit SensorNoise(std::uint32_t seed);

  // To an 8-bit B, G, R, X picture; X is left as it is.
  void add_to_color(cv::Mat& picture, std::uint64_t set) const;
  // About normally distributed numbers of deviation 1 for a row of a float picture.
  const float* row(int length, int row, std::uint64_t set, std::uint32_t purpose) const;

 private:
  std::size_t place(std::size_t room, std::uint64_t set, std::uint32_t salt) const;

  std::uint32_t seed_;
  std::vector<std::int8_t> steps_;
  std::vector<float> normal_;
};

}  // namespace halcyra::virtual_kinect::room
