// What happens in the room, minute after minute.
#pragma once

#include <cstdint>
#include <vector>

#include "virtual_kinect/room/light.hpp"
#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/person_model.hpp"

namespace halcyra::virtual_kinect::room {

constexpr std::uint64_t kSetsPerSecond = 30;
constexpr std::uint64_t kStorySets = 60 * kSetsPerSecond;  // then the story starts again

struct Presence {
  Person person;
  Posture posture;
};

struct Moment {
  std::vector<Presence> people;
  LightLevels light;
  float defocus = 0.0F;  // radius of the blur in pixels of the colour picture
};

// The moment of a set, counted from the beginning of the story. Same in every run.
Moment moment_at(std::uint64_t set);

// Where watching begins, so that there is somebody to see at once.
constexpr std::uint64_t kOpeningSet = 4 * kSetsPerSecond;

}  // namespace halcyra::virtual_kinect::room
