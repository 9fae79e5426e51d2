#include "virtual_kinect/room/depth_sensor.hpp"

#include <algorithm>
#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kLeastDepth = 500.0F;
constexpr float kMostDepth = 4500.0F;
constexpr float kOutlineStep = 0.035F;  // relative difference of neighbours at an outline
constexpr float kLeastEcho = 0.012F;
constexpr float kBrightness = 9.0e9F;  // infrared value of a full echo from 1 mm
constexpr float kDarkCurrent = 18.0F;

bool is_outline(const cv::Mat& nearness, int row, int column) {
  const float here = nearness.ptr<float>(row)[column];
  const int above = std::max(row - 1, 0);
  const int below = std::min(row + 1, nearness.rows - 1);
  const float step = std::max({std::fabs(nearness.ptr<float>(row)[column - 1] - here),
                               std::fabs(nearness.ptr<float>(row)[column + 1] - here),
                               std::fabs(nearness.ptr<float>(above)[column] - here),
                               std::fabs(nearness.ptr<float>(below)[column] - here)});
  return step > kOutlineStep * here;
}

// The share of the light that remains away from the middle, as the sensor's lamp and lens leave the
// corners darker.
float vignette(const DepthCanvas& canvas, int row, int column) {
  const Vec3 ray =
      canvas.camera.ray(static_cast<float>(column) + 0.5F, static_cast<float>(row) + 0.5F);
  const float cosine = 1.0F / (1.0F + ray.x * ray.x + ray.y * ray.y);
  return cosine * std::sqrt(cosine);
}

// Depth and infrared have independent noise.
enum Purpose : std::uint32_t { kDepth = 1, kInfrared = 2 };

// A picture of value(row, column, deviation), with 0 in the outermost columns. `deviation` is
// normally distributed noise.
template <typename Value>
cv::Mat measure(const cv::Size& size, const SensorNoise& noise, std::uint64_t set, Purpose purpose,
                const Value& value) {
  cv::Mat picture = cv::Mat::zeros(size, CV_32F);
  for (int row = 0; row < picture.rows; ++row) {
    const float* deviation = noise.row(picture.cols, row, set, purpose);
    float* measured = picture.ptr<float>(row);
    for (int column = 1; column + 1 < picture.cols; ++column) {
      measured[column] = value(row, column, deviation[column]);
    }
  }
  return picture;
}

}  // namespace

cv::Mat measure_depth(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set) {
  return measure(canvas.nearness.size(), noise, set, kDepth,
                 [&](int row, int column, float deviation) {
                   const float echo = canvas.echo.ptr<float>(row)[column];
                   if (echo < kLeastEcho || is_outline(canvas.nearness, row, column)) return 0.0F;
                   const float depth = 1.0F / canvas.nearness.ptr<float>(row)[column];
                   const float metres = depth * 0.001F;
                   const float value = depth + deviation * (0.8F + 0.9F * metres * metres);
                   return value >= kLeastDepth && value <= kMostDepth ? value : 0.0F;
                 });
}

cv::Mat measure_infrared(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set) {
  return measure(canvas.nearness.size(), noise, set, kInfrared,
                 [&](int row, int column, float deviation) {
                   const float nearness = canvas.nearness.ptr<float>(row)[column];
                   const float light = kBrightness * canvas.echo.ptr<float>(row)[column] *
                                       nearness * nearness * vignette(canvas, row, column);
                   const float shot = 0.35F * std::sqrt(light + kDarkCurrent);
                   return std::fmax(1.0F, light + kDarkCurrent + deviation * shot);
                 });
}

}  // namespace halcyra::virtual_kinect::room
