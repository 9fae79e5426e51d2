#include "virtual_kinect/image_file.hpp"

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "virtual_kinect/file_bytes.hpp"

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;

const cv::Size kColorSensorSize(1920, 1080);
const cv::Size kDepthSensorSize(512, 424);

// The pixels as they are stored. An orientation tag does not turn them, since a sensor's picture
// has none. Empty where the file cannot be decoded.
cv::Mat decode_file(const std::filesystem::path& file) {
  try {
    const std::optional<std::string> bytes = read_file(file);
    if (!bytes || bytes->empty()) {
      return {};
    }
    const std::vector<unsigned char> encoded(bytes->begin(), bytes->end());
    return cv::imdecode(encoded, cv::IMREAD_UNCHANGED);
  } catch (const std::exception&) {
    return {};
  }
}

cv::Mat to_four_channels(const cv::Mat& decoded, Frame::Format format) {
  cv::Mat pixels(decoded.size(), CV_8UC4, cv::Scalar::all(255));
  const int blue = format == Frame::RGBX ? 2 : 0;
  const std::vector<int> channels = {0, blue, 1, 1, 2, 2 - blue, 3, 3};
  const auto pairs = static_cast<std::size_t>(decoded.channels());
  cv::mixChannels(&decoded, 1, &pixels, 1, channels.data(), pairs);
  return pixels;
}

StreamImage color_image(const cv::Mat& decoded, Frame::Format format) {
  const int type = decoded.type();
  if (decoded.empty() || !(type == CV_8UC1 || type == CV_8UC3 || type == CV_8UC4)) {
    return {cv::Mat(), kColorSensorSize, 4, format};
  }
  if (type == CV_8UC1) {
    return {decoded, decoded.size(), 1, Frame::Gray};
  }
  return {to_four_channels(decoded, format), decoded.size(), 4, format};
}

StreamImage float_image(const cv::Mat& decoded) {
  if (decoded.empty() || decoded.channels() != 1) {
    return {cv::Mat(), kDepthSensorSize, 4, Frame::Float};
  }
  cv::Mat values;
  decoded.convertTo(values, CV_32F);
  return {values, values.size(), 4, Frame::Float};
}

}  // namespace

StreamImage read_image(const std::filesystem::path& file, Frame::Type stream,
                       Frame::Format color_format) {
  const cv::Mat decoded = decode_file(file);
  return stream == Frame::Color ? color_image(decoded, color_format) : float_image(decoded);
}

}  // namespace halcyra::virtual_kinect
