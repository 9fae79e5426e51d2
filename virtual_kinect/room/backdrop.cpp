#include "virtual_kinect/room/backdrop.hpp"

#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/canvas.hpp"
#include "virtual_kinect/room/furniture.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr int kFineness = 2;  // drawn this much larger: steps show most on straight edges

// Drawn in bands, so that few of the many pixels exist at a time, and each band on any thread.
constexpr int kBands = 12;
static_assert(kColorCamera.height % kBands == 0);
constexpr int kBandRows = kColorCamera.height / kBands;

constexpr Pinhole kFineCamera{kColorCamera.width * kFineness, kColorCamera.height* kFineness,
                              kColorCamera.focal* kFineness};

// Those of the surfaces that a band of the fine picture may show, from front to back as good as
// they are sorted.
std::vector<const Surface*> surfaces_in(const cv::Range& fine_rows,
                                        const std::vector<Surface>& surfaces,
                                        const std::vector<cv::Rect>& extents) {
  std::vector<const Surface*> found;
  for (std::size_t i = surfaces.size(); i-- > 0;) {
    const cv::Rect& extent = extents[i];
    const bool is_beside = extent.y >= fine_rows.end || extent.br().y <= fine_rows.start;
    if (!extent.empty() && !is_beside) found.push_back(&surfaces[i]);
  }
  return found;
}

void shrink(const cv::Mat& fine, int interpolation, cv::Mat band) {
  cv::resize(fine, band, band.size(), 0, 0, interpolation);
}

void draw_band(int number, const std::vector<Surface>& surfaces,
               const std::vector<cv::Rect>& extents, Backdrop& backdrop) {
  const cv::Range rows(number * kBandRows, (number + 1) * kBandRows);
  const cv::Range fine_rows(rows.start * kFineness, rows.end * kFineness);
  const cv::Size size(kFineCamera.width, fine_rows.size());
  const TwoLightsCanvas canvas{kFineCamera, fine_rows.start, cv::Mat::zeros(size, CV_8UC4),
                               cv::Mat::zeros(size, CV_8UC4), cv::Mat::zeros(size, CV_32F)};
  for (const Surface* surface : surfaces_in(fine_rows, surfaces, extents)) {
    draw(canvas, *surface, Pose{});
  }
  shrink(canvas.daylight, cv::INTER_AREA, backdrop.daylight.rowRange(rows));
  shrink(canvas.lamp, cv::INTER_AREA, backdrop.lamp.rowRange(rows));
  shrink(canvas.nearness, cv::INTER_NEAREST, backdrop.color_nearness.rowRange(rows));
}

void draw_color(const std::vector<Surface>& surfaces, Backdrop& backdrop) {
  const cv::Size size(kColorCamera.width, kColorCamera.height);
  backdrop.daylight.create(size, CV_8UC4);
  backdrop.lamp.create(size, CV_8UC4);
  backdrop.color_nearness.create(size, CV_32F);
  std::vector<cv::Rect> extents;
  extents.reserve(surfaces.size());
  for (const Surface& surface : surfaces) extents.push_back(extent(kFineCamera, surface, Pose{}));
  cv::parallel_for_(cv::Range(0, kBands), [&](const cv::Range& bands) {
    for (int band = bands.start; band < bands.end; ++band) {
      draw_band(band, surfaces, extents, backdrop);
    }
  });
}

void draw_depth(const std::vector<Surface>& surfaces, Backdrop& backdrop) {
  const cv::Size size(kDepthCamera.width, kDepthCamera.height);
  backdrop.depth_nearness = cv::Mat::zeros(size, CV_32F);
  backdrop.depth_echo = cv::Mat::zeros(size, CV_32F);
  const DepthCanvas canvas{kDepthCamera, backdrop.depth_nearness, backdrop.depth_echo};
  for (const Surface& surface : surfaces) draw(canvas, surface, Pose{});
}

}  // namespace

Backdrop draw_backdrop() {
  const std::vector<Surface> surfaces = furnish_room();
  Backdrop backdrop;
  draw_color(surfaces, backdrop);
  draw_depth(surfaces, backdrop);
  return backdrop;
}

void lit_backdrop(const Backdrop& backdrop, const LightLevels& levels, cv::Mat& lit) {
  cv::addWeighted(backdrop.daylight, static_cast<double>(levels.daylight), backdrop.lamp,
                  static_cast<double>(levels.lamp), 0.0, lit);
  lit |= cv::Scalar(0, 0, 0, 255);
}

}  // namespace halcyra::virtual_kinect::room
