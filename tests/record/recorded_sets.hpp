// Sets for tests of the recorder.
#pragma once

#include <cstdint>
#include <cstring>

#include <opencv2/core.hpp>

#include "record/frame_file.hpp"
#include "record/record_options.hpp"
#include "record/recorded_set.hpp"

namespace halcyra::record {

inline RecordOptions with_png() {
  RecordOptions options;
  options.color = ColorFiles::kPng;
  return options;
}

// Whether both have the same size, the same type and the same bits, whatever numbers they mean.
inline bool same_bits(const cv::Mat& actual, const cv::Mat& expected) {
  return actual.size() == expected.size() && actual.type() == expected.type() &&
         actual.isContinuous() && expected.isContinuous() &&
         std::memcmp(actual.data, expected.data, expected.total() * expected.elemSize()) == 0;
}

// Set k: blue k, green 100 + k and red 200, infrared 1000 + k, depth 2000.5 + k, everywhere.
// Encoded with PNG files.
inline RecordedSet encoded_set(std::uint32_t number) {
  RecordedSet set;
  set.number = number;
  set.seconds = 0.1 * (number - 1);
  set.frames[kColor].layout = PixelLayout::kBgrx;
  set.frames[kColor].pixels = cv::Mat(3, 4, CV_8UC4, cv::Scalar(number, 100 + number, 200, 255));
  set.frames[kInfrared].layout = PixelLayout::kFloat;
  set.frames[kInfrared].pixels = cv::Mat(2, 5, CV_32FC1, cv::Scalar(1000 + number));
  set.frames[kDepth].layout = PixelLayout::kFloat;
  set.frames[kDepth].pixels = cv::Mat(2, 5, CV_32FC1, cv::Scalar(2000.5 + number));
  for (RecordedFrame& frame : set.frames) frame.sequence = number + 40;
  encode_set(set, with_png());
  return set;
}

// A set of three frames that cannot be used, so that its files are empty.
inline RecordedSet set_without_data(std::uint32_t number) {
  RecordedSet set;
  set.number = number;
  encode_set(set, with_png());
  return set;
}

}  // namespace halcyra::record
