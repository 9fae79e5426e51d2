// Turns a moment into what the sensor sees of it.
#pragma once

#include <cstdint>
#include <map>

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/backdrop.hpp"
#include "virtual_kinect/room/canvas.hpp"
#include "virtual_kinect/room/person_model.hpp"
#include "virtual_kinect/room/sensor_noise.hpp"
#include "virtual_kinect/room/story.hpp"

namespace halcyra::virtual_kinect::room {

// The seed of the room that everybody sees.
constexpr std::uint32_t kUsualSeed = 20;

struct InfraredAndDepth {
  cv::Mat infrared;  // float, 0 at the outermost columns
  cv::Mat depth;     // float, millimetres; 0 where there is no measurement
};

class Renderer {
 public:
  // Takes a second or so; uses two threads.
  explicit Renderer(std::uint32_t seed);

  // 8-bit B, G, R, X. The set number chooses the noise alone.
  cv::Mat render_color(const Moment& moment, std::uint64_t set) const;
  InfraredAndDepth render_depth(const Moment& moment, std::uint64_t set) const;

 private:
  void draw_person(const ColorCanvas& canvas, const Presence& presence,
                   const LightLevels& light) const;
  const cv::Mat& lit_room(const LightLevels& light) const;

  Backdrop backdrop_;
  std::map<Person, PersonModel> people_;
  SensorNoise noise_;
  // The room under the light asked for last, as it seldom changes.
  mutable cv::Mat lit_room_;
  mutable LightLevels lit_by_;
};

}  // namespace halcyra::virtual_kinect::room
