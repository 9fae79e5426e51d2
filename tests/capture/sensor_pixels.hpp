// Pixels for the tests of the infrared and the depth conversion.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// A picture of one row.
inline cv::Mat row_of(const std::vector<float>& values) {
  return cv::Mat(values, true).reshape(1, 1);
}

// For each border between two levels, the floats next to it on both sides.
inline cv::Mat around(const std::vector<double>& borders) {
  std::vector<float> values;
  for (const double border : borders) {
    float value = static_cast<float>(border);
    for (int i = 0; i < 3; ++i) value = std::nextafter(value, -kInfinity);
    for (int i = 0; i < 7; ++i, value = std::nextafter(value, kInfinity)) values.push_back(value);
  }
  return row_of(values);
}

// The value without its fraction, from 0 to 255.
inline int truncated(double value) {
  return std::clamp(static_cast<int>(std::trunc(value)), 0, 255);
}

// Random pictures of every kind of content.
class RandomPictures : public ::testing::TestWithParam<unsigned int> {
 protected:
  std::mt19937 random_{GetParam()};

  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  double real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }

  float any_bits() {
    const auto bits = static_cast<std::uint32_t>(random_());
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

  float special() {
    const std::vector<float> values = {
        0.0F,      -0.0F,        kNan,          kInfinity, -kInfinity, FLT_MAX, -FLT_MAX, FLT_MIN,
        -FLT_MIN,  FLT_TRUE_MIN, -FLT_TRUE_MIN, -1.0F,     -700.0F,    249.0F,  250.0F,   500.0F,
        249.9999F, 8000.0F,      8000.0005F,    4500.0F,   4500.001F,  499.99F, 2500.0F,  1.0F};
    return values[static_cast<std::size_t>(whole(0, static_cast<int>(values.size()) - 1))];
  }

  // Values between two random bounds that lie `range` apart, and some special ones.
  cv::Mat picture(double low, double range, double share_of_specials) {
    cv::Mat values(whole(1, 24), whole(1, 24), CV_32FC1);
    for (float& value : cv::Mat_<float>(values)) {
      value = static_cast<float>(real(low, low + range));
      if (real(0, 1) < share_of_specials) value = special();
    }
    return values;
  }

  cv::Mat picture_of_any_bits() {
    cv::Mat values(whole(1, 24), whole(1, 24), CV_32FC1);
    for (float& value : cv::Mat_<float>(values)) value = any_bits();
    return values;
  }
};

}  // namespace halcyra
