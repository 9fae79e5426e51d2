#include "virtual_kinect/room/story.hpp"

#include <algorithm>
#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

// Seconds, millimetres, degrees (see Posture). From one key to the next every value changes
// smoothly, with a soft start and stop. Beyond x = +-1.2 z people are out of view.
struct PersonKey {
  float time;
  float x;
  float z;
  float body_yaw;
  float head_yaw;
  float head_pitch;
};

struct Visit {
  Person person;
  std::vector<PersonKey> keys;
};

struct LightKey {
  float time;
  float daylight;
  float lamp;
  float defocus;
};

Visit owner_stays() {
  return {Person::kOwner,
          {{2.5F, -2300, 1700, 80, 62, 4},  // walks in from the left
           {4.8F, -170, 1600, 70, 58, 2},
           {5.6F, -80, 1560, 10, 4, 0},
           {8.6F, -80, 1540, 0, -3, 0},
           {9.3F, -90, 1540, -20, -58, 0},  // looks at the window
           {10.8F, -90, 1540, -20, -60, 1},
           {11.6F, -80, 1540, 5, 3, 0},
           {13.2F, -60, 1520, 10, 5, 2},
           {13.9F, -50, 1520, 25, 60, 0},  // hears somebody coming
           {16.6F, -50, 1540, 30, 58, 0},
           {17.3F, -50, 1540, 5, 6, 0},
           {19.2F, -20, 1520, 0, 2, 1},
           {20.2F, 100, 1480, 70, 55, 4},
           {22.4F, 2100, 1480, 85, 70, 4}}};
}

Visit guest_looks_in() {
  return {Person::kGuest,
          {{14.2F, 2600, 1950, -80, -60, 3},
           {16.4F, 820, 1950, -70, -52, 2},
           {17.6F, 640, 1780, -10, -6, 0},
           {19.4F, 620, 1770, -10, -4, 0},
           {20.2F, 560, 1800, -70, -55, 2},
           {22.0F, 400, 1750, -60, -50, 0},
           {22.8F, 430, 1640, -5, -2, 0},
           {25.6F, 430, 1620, 0, 2, 1},
           {26.3F, 440, 1660, 120, 70, 0},  // goes to the back of the room
           {28.2F, 620, 2850, 60, 30, 0},
           {28.8F, 520, 2850, 5, 2, 0},
           {30.6F, 520, 2850, 0, -2, 0},
           {31.2F, 560, 2850, 80, 60, 2},
           {33.6F, 3600, 2800, 88, 80, 3}}};
}

Visit visitor_stays() {
  return {Person::kVisitor,
          {{32.0F, -2300, 1750, 80, 60, 4},
           {34.2F, -120, 1560, 65, 50, 2},
           {34.9F, -40, 1520, 5, 3, 0},
           {38.0F, 0, 1500, 0, -2, 0},
           {43.6F, 0, 1500, 0, 2, 1},
           {46.0F, 20, 1500, 2, -2, 0},
           {46.7F, 40, 1500, -20, -55, 0},
           {47.9F, 60, 1520, -20, -55, 0},
           {48.6F, 300, 1600, 40, 55, 2},
           {49.6F, 850, 1700, 10, 30, 0},
           {50.6F, 900, 1720, -10, -6, 0},
           {54.0F, 900, 1720, -15, -10, 0},
           {54.8F, 950, 1720, 70, 55, 2},
           {56.6F, 2500, 1720, 85, 70, 3}}};
}

Visit owner_returns() {
  return {Person::kOwner,
          {{46.6F, -2200, 1600, 80, 60, 4},
           {48.6F, -260, 1540, 70, 52, 2},
           {49.3F, -170, 1520, 10, 5, 0},
           {52.0F, -150, 1500, 0, -3, 0},
           {54.4F, -150, 1500, 5, 4, 1},
           {55.1F, -240, 1520, -70, -58, 2},
           {57.2F, -2150, 1560, -85, -72, 3}}};
}

Visit guest_returns() {
  return {Person::kGuest,
          {{50.0F, 3700, 2900, -85, -60, 0},
           {52.4F, 470, 2850, -70, -50, 0},
           {53.0F, 450, 2850, 0, 0, 0},
           {54.4F, 450, 2850, 0, 3, 0},
           {55.0F, 480, 2850, 75, 55, 2},
           {57.6F, 3600, 2850, 88, 70, 2}}};
}

const std::vector<Visit>& visits() {
  static const std::vector<Visit> all = {owner_stays(), guest_looks_in(), visitor_stays(),
                                         owner_returns(), guest_returns()};
  return all;
}

const std::vector<LightKey>& lights() {
  static const std::vector<LightKey> all = {
      {0.0F, 1.0F, 0.55F, 0.0F},   {37.2F, 1.0F, 0.55F, 0.0F},
      {38.4F, 0.33F, 0.12F, 0.0F},  // a cloud, and the lamp fails
      {39.4F, 0.32F, 0.11F, 0.0F}, {40.0F, 0.15F, 0.04F, 0.0F},
      {41.0F, 0.15F, 0.04F, 0.0F}, {41.8F, 1.0F, 0.55F, 0.0F},
      {42.3F, 3.2F, 1.3F, 0.0F},  // the camera's exposure is late
      {43.1F, 3.2F, 1.3F, 0.0F},   {43.6F, 1.0F, 0.55F, 0.0F},
      {44.2F, 1.0F, 0.55F, 4.0F},  // and its focus hunts
      {45.2F, 1.0F, 0.55F, 4.0F},  {45.6F, 1.0F, 0.55F, 0.0F},
      {60.0F, 1.0F, 0.55F, 0.0F},
  };
  return all;
}

float distance(const PersonKey& a, const PersonKey& b) { return std::hypot(b.x - a.x, b.z - a.z); }

// The last key whose time has come and that has a successor.
template <typename Key>
std::size_t key_before(const std::vector<Key>& keys, float time) {
  std::size_t at = 0;
  while (at + 2 < keys.size() && keys[at + 1].time <= time) ++at;
  return at;
}

// Nobody stands quite still.
void add_sway(Posture& posture, float time, float phase) {
  posture.x += 5.0F * std::sin(time * 0.9F + phase);
  posture.head_yaw += 1.6F * std::sin(time * 0.8F + phase) + 0.8F * std::sin(time * 1.9F + phase);
  posture.head_pitch += 1.1F * std::sin(time * 1.1F + 2.0F * phase);
  posture.head_roll += 1.3F * std::sin(time * 0.6F + 3.0F * phase);
}

Posture posture_at(const Visit& visit, float time) {
  const std::size_t at = key_before(visit.keys, time);
  const PersonKey& from = visit.keys[at];
  const PersonKey& to = visit.keys[at + 1];
  const float t = clamp01((time - from.time) / (to.time - from.time));
  const float eased = smoothstep(0.0F, 1.0F, t);
  float walked = 0.0F;
  for (std::size_t i = 0; i < at; ++i) walked += distance(visit.keys[i], visit.keys[i + 1]);
  const float leg = distance(from, to);
  Posture posture;
  posture.x = mix(from.x, to.x, eased);
  posture.z = mix(from.z, to.z, eased);
  posture.body_yaw = mix(from.body_yaw, to.body_yaw, eased);
  posture.head_yaw = mix(from.head_yaw, to.head_yaw, eased);
  posture.head_pitch = mix(from.head_pitch, to.head_pitch, eased);
  posture.stride = (walked + leg * eased) / kStepLength;
  posture.stride_width =
      std::fmin(1.0F, leg / 500.0F) * smoothstep(0.0F, 0.5F, 4.0F * t * (1.0F - t));
  add_sway(posture, time, 1.7F * static_cast<float>(visit.person));
  return posture;
}

}  // namespace

Moment moment_at(std::uint64_t set) {
  const float time = static_cast<float>(set % kStorySets) / static_cast<float>(kSetsPerSecond);
  Moment moment;
  for (const Visit& visit : visits()) {
    if (time >= visit.keys.front().time && time < visit.keys.back().time) {
      moment.people.push_back({visit.person, posture_at(visit, time)});
    }
  }
  const std::size_t at = key_before(lights(), time);
  const LightKey& from = lights()[at];
  const LightKey& to = lights()[at + 1];
  const float t = smoothstep(from.time, to.time, time);
  moment.light = {mix(from.daylight, to.daylight, t), mix(from.lamp, to.lamp, t)};
  moment.defocus = mix(from.defocus, to.defocus, t);
  return moment;
}

}  // namespace halcyra::virtual_kinect::room
