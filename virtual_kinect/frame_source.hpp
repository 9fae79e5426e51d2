// Where a virtual sensor gets its frames from: a recording, or the rendered room.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <libfreenect2/frame_listener.hpp>
#include <opencv2/core/mat.hpp>

namespace halcyra::virtual_kinect {

struct StreamImage {
  cv::Mat pixels;              // continuous; empty where they could not be read
  cv::Size size;               // where there are no pixels, what the sensor would have delivered
  std::size_t pixel_size = 0;  // bytes per pixel
  libfreenect2::Frame::Format format = libfreenect2::Frame::Invalid;
  bool is_given_away = false;  // nobody else has the pixels, so a frame may have them as its own
};

struct FrameSource {
  std::vector<libfreenect2::Frame::Type> streams;  // those that deliver anything
  std::optional<std::uint64_t> set_count;          // nothing: there is always a next set
  bool made_on_demand = false;  // a set costs so much that only sets that are taken should be made

  // The image of one of the streams in the given set. Called from one thread at a time. Nobody may
  // write to pixels that are not given away. An exception ends the delivery.
  std::function<StreamImage(libfreenect2::Frame::Type stream, std::uint64_t set)> image;
};

}  // namespace halcyra::virtual_kinect
