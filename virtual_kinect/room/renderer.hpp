// Draws what the sensor sees of a moment of the story.
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

// The seed of the room's noise where nobody asks for another.
constexpr std::uint32_t kUsualSeed = 20;

// As measure_infrared and measure_depth return them; 512 x 424.
struct InfraredAndDepth {
  cv::Mat infrared;
  cv::Mat depth;
};

// A Renderer is used by one thread at a time.
class Renderer {
 public:
  // Takes a second or so, on two threads.
  explicit Renderer(std::uint32_t seed);

  // 1920 x 1080, 8-bit B, G, R, X. The set number chooses the noise and nothing else.
  cv::Mat render_color(const Moment& moment, std::uint64_t set) const;
  InfraredAndDepth render_infrared_and_depth(const Moment& moment, std::uint64_t set) const;

 private:
  void draw_person(const ColorCanvas& canvas, const Presence& presence,
                   const LightLevels& light) const;
  const cv::Mat& lit_room(const LightLevels& light) const;

  Backdrop backdrop_;
  std::map<Person, PersonModel> people_;
  SensorNoise noise_;
  // The room in the light of the last call, which seldom changes.
  mutable cv::Mat lit_room_;
  mutable LightLevels lit_by_;
};

}  // namespace halcyra::virtual_kinect::room
