// Frames of any content as files of a recording: read back, they are the same bit for bit.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "record/frame_file.hpp"
#include "tests/fuzz/requirement.hpp"

namespace halcyra::record {
namespace {

constexpr int kLongestSide = 24;

RecordedFrame frame_from(FuzzedDataProvider& input, PixelLayout layout, int type) {
  RecordedFrame frame;
  frame.layout = layout;
  const int width = input.ConsumeIntegralInRange(1, kLongestSide);
  const int height = input.ConsumeIntegralInRange(1, kLongestSide);
  frame.pixels = cv::Mat::zeros(height, width, type);
  input.ConsumeData(frame.pixels.data, frame.pixels.total() * frame.pixels.elemSize());
  return frame;
}

cv::Mat read_back(const FrameFile& file) {
  require(!file.bytes.empty(), "there is a file");
  return cv::imdecode(file.bytes, cv::IMREAD_UNCHANGED);
}

bool same(const cv::Mat& a, const cv::Mat& b) {
  if (a.size() != b.size() || a.type() != b.type()) return false;
  return std::memcmp(a.data, b.data, a.total() * a.elemSize()) == 0;
}

// Often whole numbers, which have a format of their own.
void round_some(FuzzedDataProvider& input, cv::Mat& pixels) {
  if (!input.ConsumeBool()) return;
  pixels.forEach<float>([](float& pixel, const int*) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &pixel, sizeof bits);
    pixel = static_cast<float>(bits % 65536);
  });
}

void check_depth(FuzzedDataProvider& input) {
  RecordedFrame frame = frame_from(input, PixelLayout::kFloat, CV_32FC1);
  round_some(input, frame.pixels);
  FrameFile file;
  encode_frame(frame, kDepth, RecordOptions(), file);
  cv::Mat pixels = read_back(file);
  require((pixels.type() == CV_16UC1) == (file.extension == ".png"), "PNG files have 16 bits");
  if (pixels.type() == CV_16UC1) pixels.convertTo(pixels, CV_32F);
  require(same(pixels, frame.pixels), "each value is the same");
}

void check_color(FuzzedDataProvider& input) {
  const bool rgbx = input.ConsumeBool();
  const RecordedFrame frame =
      frame_from(input, rgbx ? PixelLayout::kRgbx : PixelLayout::kBgrx, CV_8UC4);
  RecordOptions options;
  options.color = ColorFiles::kPng;
  FrameFile file;
  encode_frame(frame, kColor, options, file);
  cv::Mat expected;
  cv::cvtColor(frame.pixels, expected, rgbx ? cv::COLOR_RGBA2BGR : cv::COLOR_BGRA2BGR);
  require(same(read_back(file), expected), "each colour is the same");
}

}  // namespace
}  // namespace halcyra::record

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  if (input.ConsumeBool()) {
    halcyra::record::check_depth(input);
  } else {
    halcyra::record::check_color(input);
  }
  return 0;
}
