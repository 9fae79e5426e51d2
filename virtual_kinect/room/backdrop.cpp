#include "virtual_kinect/room/backdrop.hpp"

#include <atomic>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/canvas.hpp"
#include "virtual_kinect/room/furniture.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr int kFineness = 2;  // drawn this much larger: steps show most on straight edges

// Drawn in bands, so that few of the many pixels exist at a time, and each band on any thread.
constexpr int kBands = 24;
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

// A canvas for any band.
TwoLightsCanvas make_canvas() {
  const cv::Size size(kFineCamera.width, kBandRows * kFineness);
  return {kFineCamera, 0, cv::Mat(size, CV_8UC4), cv::Mat(size, CV_8UC4), cv::Mat(size, CV_32F)};
}

void draw_band(int number, const std::vector<Surface>& surfaces,
               const std::vector<cv::Rect>& extents, TwoLightsCanvas& canvas, Backdrop& backdrop) {
  const cv::Range rows(number * kBandRows, (number + 1) * kBandRows);
  const cv::Range fine_rows(rows.start * kFineness, rows.end * kFineness);
  canvas.first_row = fine_rows.start;
  for (cv::Mat* picture : {&canvas.daylight, &canvas.lamp, &canvas.nearness}) *picture = 0;
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
  // Each thread draws all its bands into one canvas, as fresh memory for each takes its time.
  std::atomic<int> next_band = 0;
  cv::parallel_for_({0, cv::getNumThreads()}, [&](const cv::Range&) {
    int band = next_band++;
    if (band >= kBands) return;
    TwoLightsCanvas canvas = make_canvas();
    for (; band < kBands; band = next_band++) {
      draw_band(band, surfaces, extents, canvas, backdrop);
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
