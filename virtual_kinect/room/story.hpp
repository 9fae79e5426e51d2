// What happens in the room, minute after minute.
#pragma once

#include <cstdint>
#include <vector>

#include "virtual_kinect/room/light.hpp"
#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/person_model.hpp"

namespace halcyra::virtual_kinect::room {

constexpr std::uint64_t sets_per_second = 30;
constexpr std::uint64_t story_sets = 60 * sets_per_second;  // then it starts again

struct Presence {
  Person person;
  Posture posture;
};

struct Scene {
  std::vector<Presence> people;
  LightLevels light;
  float defocus = 0.0F;  // radius of the blur in colour pixels
};

Scene scene_at(std::uint64_t set);

}  // namespace halcyra::virtual_kinect::room
