#include "virtual_kinect/room_source.hpp"

#include <memory>
#include <optional>
#include <utility>

#include "virtual_kinect/room/renderer.hpp"
#include "virtual_kinect/room/story.hpp"

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;
using room::InfraredAndDepth;
using room::moment_at;
using room::Renderer;

struct Room {
  explicit Room(std::uint32_t seed) : renderer(seed) {}

  // Infrared and depth are measured together, so the other of the two is kept until it is asked
  // for.
  cv::Mat measurement(cv::Mat InfraredAndDepth::*stream, std::uint64_t set) {
    if (measured_set != set || (measured.*stream).empty()) {
      measured = renderer.render_infrared_and_depth(moment_at(set), set);
      measured_set = set;
    }
    return std::exchange(measured.*stream, cv::Mat());
  }

  Renderer renderer;
  std::optional<std::uint64_t> measured_set;
  InfraredAndDepth measured;
};

StreamImage stream_image(const cv::Mat& pixels, Frame::Format format) {
  return {pixels, pixels.size(), pixels.elemSize(), format, true};
}

}  // namespace

FrameSource open_room(std::uint32_t seed) {
  const auto shown = std::make_shared<Room>(seed);
  FrameSource source;
  source.streams = {Frame::Color, Frame::Ir, Frame::Depth};
  source.made_on_demand = true;
  source.image = [shown](Frame::Type stream, std::uint64_t delivered) {
    const std::uint64_t set = room::kOpeningSet + delivered;
    switch (stream) {
      case Frame::Ir:
        return stream_image(shown->measurement(&InfraredAndDepth::infrared, set), Frame::Float);
      case Frame::Depth:
        return stream_image(shown->measurement(&InfraredAndDepth::depth, set), Frame::Float);
      case Frame::Color:
        break;
    }
    return stream_image(shown->renderer.render_color(moment_at(set), set), Frame::BGRX);
  };
  return source;
}

}  // namespace halcyra::virtual_kinect
