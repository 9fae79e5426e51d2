// The conversions of sensor frames, pixel by pixel against their rules in plain words.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include <opencv2/imgproc.hpp>

#include "capture/frame_conversion.hpp"
#include "tests/fuzz/requirement.hpp"

namespace halcyra {
namespace {

constexpr int kLongestSide = 40;

// A frame of the input's bytes; zeros where it has no more of them.
cv::Mat frame_from(FuzzedDataProvider& input, int type) {
  const int width = input.ConsumeIntegralInRange(1, kLongestSide);
  const int height = input.ConsumeIntegralInRange(1, kLongestSide);
  cv::Mat frame = cv::Mat::zeros(height, width, type);
  input.ConsumeData(frame.data, frame.total() * frame.elemSize());
  return frame;
}

bool same(const cv::Mat& a, const cv::Mat& b) {
  if (a.size() != b.size() || a.type() != b.type()) return false;
  return std::memcmp(a.data, b.data, a.total() * a.elemSize()) == 0;
}

// ---- Colour.

void check_color(const cv::Mat& pixels, ChannelOrder order) {
  ColorImages images;
  color_images(pixels, order, images);
  require(images.bgr.size() == pixels.size() && images.bgr.type() == CV_8UC3, "a BGR picture");
  require(images.grey.size() == pixels.size() && images.grey.type() == CV_8UC1, "a grey picture");
  const int blue = order == ChannelOrder::kRgbx ? 2 : 0;
  for (int y = 0; y < pixels.rows; ++y) {
    for (int x = 0; x < pixels.cols; ++x) {
      const auto& from = pixels.at<cv::Vec4b>(y, x);
      const cv::Vec3b bgr(from[blue], from[1], from[2 - blue]);
      require(images.bgr.at<cv::Vec3b>(y, x) == bgr, "each colour is where it belongs");
      const double luma = 0.114 * bgr[0] + 0.587 * bgr[1] + 0.299 * bgr[2];
      const double grey = images.grey.at<std::uint8_t>(y, x);
      require(std::abs(grey - luma) <= 0.51, "the grey is the rounded luma");
    }
  }
}

// ---- Infrared.

bool counts_as_intensity(float value) { return std::isfinite(value) && value > 0; }

// Empty when no two intensities differ.
cv::Mat expected_infrared(const cv::Mat& frame) {
  double low = std::numeric_limits<double>::infinity();
  double high = 0;
  for (const float value : cv::Mat_<float>(frame)) {
    if (!counts_as_intensity(value)) continue;
    low = std::min<double>(low, value);
    high = std::max<double>(high, value);
  }
  if (!(low < high)) return {};
  const double top = std::min(high, low + std::max(0.85 * (high - low), 1200.0));
  const double scale = 255 / std::max(top - low, 1.0);
  cv::Mat levels = cv::Mat::zeros(frame.size(), CV_8UC1);
  for (int i = 0; i < frame.rows * frame.cols; ++i) {
    const cv::Point at(i % frame.cols, i / frame.cols);
    const double value = frame.at<float>(at);
    if (!counts_as_intensity(frame.at<float>(at))) continue;
    levels.at<std::uint8_t>(at) =
        static_cast<std::uint8_t>(std::min(255.0, (std::min(value, top) - low) * scale));
  }
  cv::Mat picture;
  cv::equalizeHist(levels, levels);
  cv::cvtColor(levels, picture, cv::COLOR_GRAY2BGR);
  return picture;
}

// ---- Depth.

// Empty when nothing is a depth.
cv::Mat expected_depth(const cv::Mat& frame) {
  cv::Mat levels = cv::Mat::zeros(frame.size(), CV_8UC1);
  bool any = false;
  for (int i = 0; i < frame.rows * frame.cols; ++i) {
    const cv::Point at(i % frame.cols, i / frame.cols);
    const double millimetres = frame.at<float>(at);
    if (!(millimetres >= 250 && millimetres <= 8000)) continue;
    any = true;
    const double within = std::clamp(millimetres, 500.0, 4500.0);
    levels.at<std::uint8_t>(at) = static_cast<std::uint8_t>(255 - (within - 500) / 4000 * 255);
  }
  if (!any) return {};
  cv::Mat picture;
  cv::applyColorMap(levels, picture, cv::COLORMAP_JET);
  return picture;
}

using Conversion = bool (*)(const cv::Mat& frame, cv::Mat& picture);

void check_converted(Conversion convert, const cv::Mat& frame, const cv::Mat& expected) {
  const cv::Mat before(1, 1, CV_8UC3, cv::Scalar(1, 2, 3));
  cv::Mat picture = before;
  const bool converted = convert(frame, picture);
  require(converted == !expected.empty(), "a frame is converted where it can be");
  require(converted || picture.data == before.data, "the picture before is kept otherwise");
  require(!converted || same(picture, expected), "each pixel follows the rule");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  FuzzedDataProvider input(data, size);
  switch (input.ConsumeIntegralInRange(0, 2)) {
    case 0: {
      const bool rgbx = input.ConsumeBool();
      check_color(frame_from(input, CV_8UC4), rgbx ? ChannelOrder::kRgbx : ChannelOrder::kBgrx);
      break;
    }
    case 1: {
      const cv::Mat frame = frame_from(input, CV_32FC1);
      check_converted(infrared_picture, frame, expected_infrared(frame));
      break;
    }
    default: {
      const cv::Mat frame = frame_from(input, CV_32FC1);
      check_converted(depth_picture, frame, expected_depth(frame));
    }
  }
  return 0;
}
