// The frame sets that are measured, as the sensor delivers them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

struct RecordedFrames {
  cv::Mat color;     // 8-bit, 4 channels (BGRX), 1920 x 1080
  cv::Mat infrared;  // 32-bit float, 512 x 424
  cv::Mat depth;     // 32-bit float, 512 x 424, millimetres
};

struct NamedFrames {
  std::string name;
  RecordedFrames frames;
};

// One set of the rendered room's minute, which has 30 sets a second; the first is 0.
RecordedFrames room_frames(std::uint64_t set);

// The rendered room with nobody, one person and three people, and a photograph of one person.
const std::vector<NamedFrames>& measured_frames();

}  // namespace halcyra
