#include "virtual_kinect/room/depth_sensor.hpp"

#include <algorithm>
#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float least_depth = 500.0F;
constexpr float most_depth = 4500.0F;
constexpr float outline_step = 0.035F;  // share of the depth by which neighbours differ there
constexpr float least_echo = 0.012F;
constexpr float brightness = 9.0e9F;  // infrared value of a full echo from 1 mm
constexpr float dark_current = 18.0F;

bool is_outline(const cv::Mat& nearness, int row, int column) {
  const float here = nearness.ptr<float>(row)[column];
  const int above = std::max(row - 1, 0);
  const int below = std::min(row + 1, nearness.rows - 1);
  const float step = std::max({std::fabs(nearness.ptr<float>(row)[column - 1] - here),
                               std::fabs(nearness.ptr<float>(row)[column + 1] - here),
                               std::fabs(nearness.ptr<float>(above)[column] - here),
                               std::fabs(nearness.ptr<float>(below)[column] - here)});
  return step > outline_step * here;
}

// The sensor's lamp and lens leave the corners darker.
float vignette(const DepthCanvas& canvas, int row, int column) {
  const Vec3 ray =
      canvas.camera.ray(static_cast<float>(column) + 0.5F, static_cast<float>(row) + 0.5F);
  const float cosine = 1.0F / (1.0F + ray.x * ray.x + ray.y * ray.y);
  return cosine * std::sqrt(cosine);
}

}  // namespace

cv::Mat measure_depth(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set) {
  cv::Mat depth = cv::Mat::zeros(canvas.nearness.size(), CV_32F);
  for (int row = 0; row < depth.rows; ++row) {
    const float* deviation = noise.row(depth.cols, row, set, 1);
    const float* nearness = canvas.nearness.ptr<float>(row);
    const float* echo = canvas.echo.ptr<float>(row);
    float* measured = depth.ptr<float>(row);
    for (int column = 1; column + 1 < depth.cols; ++column) {
      if (echo[column] < least_echo || is_outline(canvas.nearness, row, column)) {
        continue;
      }
      const float true_depth = 1.0F / nearness[column];
      const float metres = true_depth * 0.001F;
      const float value = true_depth + deviation[column] * (0.8F + 0.9F * metres * metres);
      measured[column] = value >= least_depth && value <= most_depth ? value : 0.0F;
    }
  }
  return depth;
}

cv::Mat measure_infrared(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set) {
  cv::Mat infrared = cv::Mat::zeros(canvas.nearness.size(), CV_32F);
  for (int row = 0; row < infrared.rows; ++row) {
    const float* deviation = noise.row(infrared.cols, row, set, 2);
    const float* nearness = canvas.nearness.ptr<float>(row);
    const float* echo = canvas.echo.ptr<float>(row);
    float* measured = infrared.ptr<float>(row);
    for (int column = 1; column + 1 < infrared.cols; ++column) {
      const float light = brightness * echo[column] * nearness[column] * nearness[column] *
                          vignette(canvas, row, column);
      const float shot = 0.35F * std::sqrt(light + dark_current);
      measured[column] = std::fmax(1.0F, light + dark_current + deviation[column] * shot);
    }
  }
  return infrared;
}

}  // namespace halcyra::virtual_kinect::room
