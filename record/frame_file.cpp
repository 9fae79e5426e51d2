#include "record/frame_file.hpp"

#include <cstring>
#include <exception>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra::record {
namespace {

constexpr int kUncompressed = 1;  // of TIFF's numbers for compressions

// False where converting to 16 bits and back would change a bit of the value.
bool fits_16_bits(float value, std::uint16_t& whole) {
  if (!(value >= 0.0F && value <= 65535.0F)) return false;  // NaN as well
  whole = static_cast<std::uint16_t>(value);
  const auto back = static_cast<float>(whole);
  return std::memcmp(&back, &value, sizeof(value)) == 0;
}

// False, with `whole` in any state, unless all values fit.
bool to_16_bits(const cv::Mat& values, cv::Mat& whole) {
  whole.create(values.size(), CV_16UC1);
  const auto* const from = values.ptr<float>();
  auto* const to = whole.ptr<std::uint16_t>();
  for (std::size_t i = 0; i < values.total(); ++i) {
    if (!fits_16_bits(from[i], to[i])) return false;
  }
  return true;
}

void encode(const cv::Mat& picture, const std::string& extension, const std::vector<int>& settings,
            FrameFile& file) {
  file.extension = extension;
  if (!cv::imencode(extension, picture, file.bytes, settings)) {
    CV_Error(cv::Error::StsError, "no " + extension + " file can be made of the picture");
  }
}

// Not compressed, because compressing floats saves little and takes long.
void encode_values(const cv::Mat& values, FrameFile& file) {
  cv::Mat whole;
  if (to_16_bits(values, whole)) {
    encode(whole, ".png", {}, file);
  } else {
    encode(values, ".tiff", {cv::IMWRITE_TIFF_COMPRESSION, kUncompressed}, file);
  }
}

std::string color_extension(const RecordOptions& options) {
  return options.color == ColorFiles::kPng ? ".png" : ".jpg";
}

void encode_color(const RecordedFrame& frame, const RecordOptions& options, FrameFile& file) {
  cv::Mat picture = frame.pixels;
  if (frame.layout == PixelLayout::kBgrx) cv::cvtColor(frame.pixels, picture, cv::COLOR_BGRA2BGR);
  if (frame.layout == PixelLayout::kRgbx) cv::cvtColor(frame.pixels, picture, cv::COLOR_RGBA2BGR);
  std::vector<int> settings;
  if (options.color == ColorFiles::kJpeg) {
    settings = {cv::IMWRITE_JPEG_QUALITY, options.jpeg_quality};
  }
  encode(picture, color_extension(options), settings, file);
}

}  // namespace

void encode_frame(const RecordedFrame& frame, Stream stream, const RecordOptions& options,
                  FrameFile& file) {
  if (frame.layout == PixelLayout::kNone) {
    file.bytes.clear();
    file.extension = stream == kColor ? color_extension(options) : ".png";
  } else if (stream == kColor) {
    encode_color(frame, options, file);
  } else {
    encode_values(frame.pixels, file);
  }
}

void encode_set(RecordedSet& set, const RecordOptions& options) {
  set.failure.clear();
  try {
    for (const Stream stream : {kColor, kInfrared, kDepth}) {
      if (options.streams[stream]) {
        encode_frame(set.frames[stream], stream, options, set.files[stream]);
      }
    }
  } catch (const std::exception& error) {
    set.failure = std::string("a picture cannot be encoded: ") + error.what();
  }
}

}  // namespace halcyra::record
