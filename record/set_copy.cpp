#include "record/set_copy.hpp"

#include <cstring>

namespace halcyra::record {
namespace {

using libfreenect2::Frame;

constexpr std::size_t kLongestSide = 65'500;  // of a JPEG file
constexpr std::size_t kMostPixels = std::size_t{1} << 26U;

constexpr std::array<Frame::Type, kStreams> kTypes = {Frame::Color, Frame::Ir, Frame::Depth};

PixelLayout color_layout(const Frame& frame) {
  if (frame.bytes_per_pixel == 1 && frame.format == Frame::Gray) return PixelLayout::kGrey;
  if (frame.bytes_per_pixel != 4) return PixelLayout::kNone;
  return frame.format == Frame::RGBX ? PixelLayout::kRgbx : PixelLayout::kBgrx;
}

bool has_picture_size(const Frame& frame) {
  return frame.width > 0 && frame.height > 0 && frame.width <= kLongestSide &&
         frame.height <= kLongestSide && frame.width * frame.height <= kMostPixels;
}

PixelLayout layout_of(const Frame& frame, std::size_t stream) {
  if (frame.data == nullptr || !has_picture_size(frame)) return PixelLayout::kNone;
  if (stream == kColor) return color_layout(frame);
  return frame.bytes_per_pixel == sizeof(float) ? PixelLayout::kFloat : PixelLayout::kNone;
}

int type_of(PixelLayout layout) {
  if (layout == PixelLayout::kFloat) return CV_32FC1;
  return layout == PixelLayout::kGrey ? CV_8UC1 : CV_8UC4;
}

void copy_pixels(const Frame& frame, RecordedFrame& copy) {
  copy.pixels.create(static_cast<int>(frame.height), static_cast<int>(frame.width),
                     type_of(copy.layout));
  std::memcpy(copy.pixels.data, frame.data, frame.width * frame.height * frame.bytes_per_pixel);
}

}  // namespace

void copy_set(const libfreenect2::FrameMap& frames, const StreamChoice& streams,
              RecordedSet& copy) {
  for (std::size_t stream = 0; stream < kStreams; ++stream) {
    RecordedFrame& copied = copy.frames[stream];
    copied.layout = PixelLayout::kNone;
    copied.sequence = 0;
    copied.timestamp = 0;
    const auto found = frames.find(kTypes[stream]);
    if (found == frames.end() || found->second == nullptr) continue;
    const Frame& frame = *found->second;
    copied.sequence = frame.sequence;
    copied.timestamp = frame.timestamp;
    copied.layout = layout_of(frame, stream);
    if (streams[stream] && copied.layout != PixelLayout::kNone) copy_pixels(frame, copied);
  }
}

}  // namespace halcyra::record
