// The noise of the sensor's pictures: made once, then read from places that differ from set to set.
#pragma once

#include <cstdint>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra::virtual_kinect::room {

class SensorNoise {
 public:
  explicit SensorNoise(std::uint32_t seed);

  // Writes an area of an 8-bit B, G, R, X picture of less than 131072 columns into `noisy`, a
  // picture of the same size, with noise in B, G and R. The noise of a pixel does not depend on the
  // area. `noisy` may be `picture`.
  void add_to_color(const cv::Mat& picture, const cv::Rect& area, std::uint64_t set,
                    cv::Mat& noisy) const;
  // `length` (below 65536) nearly normally distributed numbers of standard deviation 1 for a row of
  // a picture. Each `purpose` has numbers of its own.
  const float* row(int length, int row, std::uint64_t set, std::uint32_t purpose) const;

 private:
  std::size_t place(std::size_t places, std::uint64_t set, std::uint32_t salt) const;

  std::uint32_t seed_;
  std::vector<std::int8_t> steps_;
  std::vector<float> normal_;
};

}  // namespace halcyra::virtual_kinect::room
