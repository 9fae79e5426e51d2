#include "virtual_kinect/room/backdrop.hpp"

#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/canvas.hpp"
#include "virtual_kinect/room/furniture.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr int kFineness = 2;  // drawn this much larger: steps show most on straight edges

ColorCanvas draw_color(const std::vector<Surface>& surfaces, const LightLevels& levels, int times) {
  const Pinhole camera{kColorCamera.width * times, kColorCamera.height * times,
                       kColorCamera.focal * static_cast<float>(times)};
  const cv::Size size(camera.width, camera.height);
  ColorCanvas canvas{camera, cv::Mat::zeros(size, CV_8UC4), cv::Mat::zeros(size, CV_32F)};
  for (auto surface = surfaces.rbegin(); surface != surfaces.rend(); ++surface) {
    draw(canvas, *surface, Pose{}, levels, 0.0F);
  }
  return canvas;
}

cv::Mat shrunk(const cv::Mat& picture, int interpolation) {
  cv::Mat result;
  cv::resize(picture, result, {kColorCamera.width, kColorCamera.height}, 0, 0, interpolation);
  return result;
}

}  // namespace

Backdrop draw_backdrop() {
  const std::vector<Surface> surfaces = furnish_room();
  Backdrop backdrop;
  const ColorCanvas day = draw_color(surfaces, {1.0F, 0.0F}, kFineness);
  backdrop.daylight = shrunk(day.color, cv::INTER_AREA);
  backdrop.color_nearness = shrunk(day.nearness, cv::INTER_NEAREST);
  backdrop.lamp = shrunk(draw_color(surfaces, {0.0F, 1.0F}, kFineness).color, cv::INTER_AREA);
  const cv::Size size(kDepthCamera.width, kDepthCamera.height);
  const DepthCanvas depth{kDepthCamera, cv::Mat::zeros(size, CV_32F), cv::Mat::zeros(size, CV_32F)};
  for (const Surface& surface : surfaces) {
    draw(depth, surface, Pose{});
  }
  backdrop.depth_nearness = depth.nearness;
  backdrop.depth_echo = depth.echo;
  return backdrop;
}

cv::Mat lit_backdrop(const Backdrop& backdrop, const LightLevels& levels) {
  cv::Mat lit;
  cv::addWeighted(backdrop.daylight, static_cast<double>(levels.daylight), backdrop.lamp,
                  static_cast<double>(levels.lamp), 0.0, lit);
  lit |= cv::Scalar(0, 0, 0, 255);
  return lit;
}

}  // namespace halcyra::virtual_kinect::room
