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

// The share of the light that remains away from the middle, as the sensor's lamp and lens leave the
// corners darker.
float vignette(const Pinhole& camera, int row, int column) {
  const Vec3 ray = camera.ray(static_cast<float>(column) + 0.5F, static_cast<float>(row) + 0.5F);
  const float cosine = 1.0F / (1.0F + ray.x * ray.x + ray.y * ray.y);
  return cosine * std::sqrt(cosine);
}

// Depth and infrared have independent noise.
enum Purpose : std::uint32_t { kDepth = 1, kInfrared = 2 };

// A row of the canvas's nearness with those above and below it.
struct NearnessRows {
  const float* above;
  const float* here;
  const float* below;
};

NearnessRows nearness_rows(const cv::Mat& nearness, int row) {
  return {nearness.ptr<float>(std::max(row - 1, 0)), nearness.ptr<float>(row),
          nearness.ptr<float>(std::min(row + 1, nearness.rows - 1))};
}

bool is_outline(const NearnessRows& rows, int column) {
  const float here = rows.here[column];
  const float step = std::max(
      std::max(std::fabs(rows.here[column - 1] - here), std::fabs(rows.here[column + 1] - here)),
      std::max(std::fabs(rows.above[column] - here), std::fabs(rows.below[column] - here)));
  return step > kOutlineStep * here;
}

}  // namespace

// The loops have no branches and write only values of their own, so that the compiler makes them
// compute several pixels at once.

cv::Mat measure_depth(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set) {
  cv::Mat picture = cv::Mat::zeros(canvas.nearness.size(), CV_32F);
  for (int row = 0; row < picture.rows; ++row) {
    const float* deviation = noise.row(picture.cols, row, set, kDepth);
    const float* echo = canvas.echo.ptr<float>(row);
    const NearnessRows nearness = nearness_rows(canvas.nearness, row);
    float* measured = picture.ptr<float>(row);
    for (int column = 1; column + 1 < picture.cols; ++column) {
      const float depth = 1.0F / nearness.here[column];
      const float metres = depth * 0.001F;
      const float value = depth + deviation[column] * (0.8F + 0.9F * metres * metres);
      const bool is_measured = (echo[column] >= kLeastEcho) & !is_outline(nearness, column) &
                               (value >= kLeastDepth) & (value <= kMostDepth);
      measured[column] = is_measured ? value : 0.0F;
    }
  }
  return picture;
}

cv::Mat make_vignette(const Pinhole& camera) {
  cv::Mat shares(camera.height, camera.width, CV_32F);
  for (int row = 0; row < shares.rows; ++row) {
    for (int column = 0; column < shares.cols; ++column) {
      shares.at<float>(row, column) = vignette(camera, row, column);
    }
  }
  return shares;
}

cv::Mat measure_infrared(const DepthCanvas& canvas, const cv::Mat& vignette,
                         const SensorNoise& noise, std::uint64_t set) {
  cv::Mat picture = cv::Mat::zeros(canvas.nearness.size(), CV_32F);
  for (int row = 0; row < picture.rows; ++row) {
    const float* deviation = noise.row(picture.cols, row, set, kInfrared);
    const float* echo = canvas.echo.ptr<float>(row);
    const float* nearness = canvas.nearness.ptr<float>(row);
    const float* share = vignette.ptr<float>(row);
    float* measured = picture.ptr<float>(row);
    for (int column = 1; column + 1 < picture.cols; ++column) {
      const float light =
          kBrightness * echo[column] * nearness[column] * nearness[column] * share[column];
      const float shot = 0.35F * std::sqrt(light + kDarkCurrent);
      measured[column] = std::max(1.0F, light + kDarkCurrent + deviation[column] * shot);
    }
  }
  return picture;
}

}  // namespace halcyra::virtual_kinect::room
