#include "virtual_kinect/room/sensor_noise.hpp"

#include <algorithm>
#include <cmath>

#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kColorDeviation = 1.25F;  // grey levels
constexpr std::size_t kColorPixels = std::size_t{1} << 17U;
constexpr std::size_t kFloatCount = std::size_t{1} << 16U;

// The sum of four uniform distributions, scaled to a standard deviation of 1.
float near_normal(std::uint32_t n) {
  const float sum =
      hash_unit(4 * n) + hash_unit(4 * n + 1) + hash_unit(4 * n + 2) + hash_unit(4 * n + 3);
  return (sum - 2.0F) * 1.7320508F;
}

}  // namespace

SensorNoise::SensorNoise(std::uint32_t seed) : seed_(hash_bits(seed)) {
  normal_.resize(kFloatCount);
  for (std::size_t i = 0; i < kFloatCount; ++i) {
    normal_[i] = near_normal(static_cast<std::uint32_t>(i) + seed_);
  }
  steps_.assign(4 * kColorPixels, 0);
  for (std::size_t i = 0; i < steps_.size(); ++i) {
    if (i % 4 != 3) {
      const float value = kColorDeviation * normal_[(i * 7919 + i / kFloatCount) % kFloatCount];
      steps_[i] = static_cast<std::int8_t>(std::lround(value));
    }
  }
}

std::size_t SensorNoise::place(std::size_t places, std::uint64_t set, std::uint32_t salt) const {
  const auto number = static_cast<std::uint32_t>(set ^ (set >> 32U));
  return hash_bits(hash_bits(number + seed_) + salt) % places;
}

void SensorNoise::add_to_color(const cv::Mat& picture, const cv::Rect& area, std::uint64_t set,
                               cv::Mat& noisy) const {
  const std::size_t places = kColorPixels - static_cast<std::size_t>(picture.cols);
  const int start = 4 * area.x;
  const int end = 4 * area.br().x;
  for (int row = area.y; row < area.br().y; ++row) {
    const std::int8_t* step = &steps_[4 * place(places, set, static_cast<std::uint32_t>(row))];
    const uchar* value = picture.ptr(row);
    uchar* sum = noisy.ptr(row);
    for (int i = start; i < end; ++i) {
      sum[i] = static_cast<uchar>(std::min(std::max(value[i] + step[i], 0), 255));
    }
  }
}

const float* SensorNoise::row(int length, int row, std::uint64_t set, std::uint32_t purpose) const {
  const std::uint32_t salt = static_cast<std::uint32_t>(row) + 100000U * purpose;
  return &normal_[place(kFloatCount - static_cast<std::size_t>(length), set, salt)];
}

}  // namespace halcyra::virtual_kinect::room
