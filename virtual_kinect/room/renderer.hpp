// Draws what the sensor sees of a moment of the story.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

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
  // Takes some tenths of a second, on several threads.
  explicit Renderer(std::uint32_t seed);

  // 1920 x 1080, 8-bit B, G, R, X, in pixels that nobody else has. The set number chooses the noise
  // and nothing else. A person's first picture takes a tenth of a second longer.
  cv::Mat render_color(const Moment& moment, std::uint64_t set) const;
  // Likewise.
  InfraredAndDepth render_infrared_and_depth(const Moment& moment, std::uint64_t set) const;

 private:
  const PersonModel& model_of(Person person) const;
  std::vector<PlacedPart> parts_of(const Presence& presence) const;
  const cv::Mat& lit_room(const LightLevels& light) const;
  cv::Rect draw_people(const Moment& moment, const cv::Mat& room, cv::Mat& picture) const;

  Backdrop backdrop_;
  cv::Mat vignette_;
  SensorNoise noise_;
  // Made when they first appear.
  mutable std::map<Person, PersonModel> people_;
  // The room in the light of the last call, which seldom changes.
  mutable cv::Mat lit_room_;
  mutable LightLevels lit_by_;
  // As in ColorCanvas where people are drawn; elsewhere there is anything.
  mutable cv::Mat nearness_;
};

}  // namespace halcyra::virtual_kinect::room
