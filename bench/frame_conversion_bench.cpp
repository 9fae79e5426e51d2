#include <opencv2/imgproc.hpp>

#include "bench/measurement.hpp"
#include "bench/recorded_frames.hpp"
#include "capture/frame_conversion.hpp"

namespace halcyra {
namespace {

// Range, levels, equalising, three channels.
void infrared_floor(const cv::Mat& intensities, cv::Mat& levels, cv::Mat& picture) {
  double low = 0;
  double high = 0;
  cv::minMaxLoc(intensities, &low, &high);
  intensities.convertTo(levels, CV_8U, 255 / (high - low), -low);
  cv::equalizeHist(levels, levels);
  cv::cvtColor(levels, picture, cv::COLOR_GRAY2BGR);
}

void depth_floor(const cv::Mat& millimetres, cv::Mat& levels, cv::Mat& picture) {
  millimetres.convertTo(levels, CV_8U, -255.0 / 4000, 255 + 500 * 255.0 / 4000);
  cv::applyColorMap(levels, picture, cv::COLORMAP_JET);
}

}  // namespace

void add_frame_conversion_rows() {
  static const RecordedFrames frames = measured_frames()[1].frames;
  static cv::Mat levels;
  static cv::Mat picture;
  static cv::Mat grey;
  static ColorImages images;
  add_row(
      "infrared conversion", "room", [] { infrared_picture(frames.infrared, picture); },
      [] { infrared_floor(frames.infrared, levels, picture); });
  add_row(
      "depth conversion", "room", [] { depth_picture(frames.depth, picture); },
      [] { depth_floor(frames.depth, levels, picture); });
  add_row(
      "colour conversion", "room", [] { color_images(frames.color, ChannelOrder::kBgrx, images); },
      [] {
        cv::cvtColor(frames.color, picture, cv::COLOR_BGRA2BGR);
        cv::cvtColor(frames.color, grey, cv::COLOR_BGRA2GRAY);
      });
}

}  // namespace halcyra
