// One frame set on its way from the sensor to the disk.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra::record {

enum Stream : std::size_t { kColor, kInfrared, kDepth };
constexpr std::size_t kStreams = 3;

// Their folders in a recording, and their words on the command line.
constexpr std::array<const char*, kStreams> kStreamNames = {"color", "ir", "depth"};

using StreamChoice = std::array<bool, kStreams>;

// What the pixels of a frame are.
enum class PixelLayout {
  kNone,   // the frame cannot be used
  kBgrx,   // 8 bits, 4 channels, the fourth unused
  kRgbx,   // the same in the opposite order
  kGrey,   // 8 bits, 1 channel
  kFloat,  // 32-bit float, 1 channel
};

struct RecordedFrame {
  PixelLayout layout = PixelLayout::kNone;
  cv::Mat pixels;               // continuous; those of an earlier frame where the layout is kNone
  std::uint32_t sequence = 0;   // the sensor's number, which wraps
  std::uint32_t timestamp = 0;  // units of 0.125 ms; wraps
};

struct FrameFile {
  std::vector<unsigned char> bytes;  // empty for a frame that cannot be used
  std::string extension;             // with its dot
};

struct RecordedSet {
  std::uint32_t number = 0;  // counts the sets that are kept, from 1
  double seconds = 0.0;      // from the arrival of the first set to that of this one
  std::array<RecordedFrame, kStreams> frames;
  std::array<FrameFile, kStreams> files;
  std::string failure;  // why the frames could not be encoded, usually empty
};

}  // namespace halcyra::record
