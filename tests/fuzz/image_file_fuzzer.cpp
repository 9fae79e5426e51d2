// One picture of a recording, read for each stream. The input's first byte chooses the stream and
// the order of the channels, the rest is the file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/fuzz/memory_file.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"
#include "virtual_kinect/image_file.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

// Whether the file begins like one of a recording's formats. Any other beginning makes OpenCV try
// libraries for medical and geographic pictures, which end the process on a file that is none.
bool begins_as_picture(const std::string& file) {
  static const std::vector<std::string> kBeginnings = {
      "\x89PNG\r\n\x1A\n", "BM", "\xFF\xD8\xFF", {"II*\0", 4}, {"MM\0*", 4}};
  return std::any_of(kBeginnings.begin(), kBeginnings.end(), [&](const std::string& beginning) {
    return file.compare(0, beginning.size(), beginning) == 0;
  });
}

void check_missing(const StreamImage& image, Frame::Type stream) {
  const bool color = stream == Frame::Color;
  require(image.size == (color ? cv::Size(1920, 1080) : cv::Size(512, 424)),
          "without pixels, the size is the sensor's");
  require(image.pixel_size == 4, "without pixels, a pixel has four bytes");
}

void check_color(const StreamImage& image, Frame::Format wanted) {
  if (image.format == Frame::Gray) {
    require(image.pixels.type() == CV_8UC1 && image.pixel_size == 1, "grey has one byte");
    return;
  }
  require(image.format == wanted, "colour comes in the order asked for");
  require(image.pixels.type() == CV_8UC4 && image.pixel_size == 4, "colour has four bytes");
}

void check(const StreamImage& image, Frame::Type stream, Frame::Format wanted) {
  if (image.pixels.empty()) {
    check_missing(image, stream);
  } else {
    require(image.size == image.pixels.size(), "the size is that of the pixels");
    require(image.pixels.isContinuous(), "the pixels have no gaps");
  }
  if (stream != Frame::Color) {
    require(image.format == Frame::Float, "infrared and depth are floats");
    require(image.pixels.empty() || image.pixels.type() == CV_32FC1, "one float for each pixel");
  } else if (!image.pixels.empty()) {
    check_color(image, wanted);
  }
}

}  // namespace
}  // namespace halcyra::virtual_kinect

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra::virtual_kinect;
  if (size == 0) return 0;
  constexpr Frame::Type kStreams[] = {Frame::Color, Frame::Ir, Frame::Depth};
  const Frame::Type stream = kStreams[data[0] % 3];
  const Frame::Format wanted = data[0] % 2 == 0 ? Frame::BGRX : Frame::RGBX;
  const std::string bytes = halcyra::text_of(data + 1, size - 1);
  if (!begins_as_picture(bytes)) return 0;
  const halcyra::MemoryFile file(bytes);
  check(read_image(file.path(), stream, wanted), stream, wanted);
  return 0;
}
