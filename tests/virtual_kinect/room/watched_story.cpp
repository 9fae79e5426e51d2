#include "tests/virtual_kinect/room/watched_story.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

#include "app/loop_turn.hpp"
#include "demo/owner_samples.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "face_pipeline/owner_recognition.hpp"
#include "tests/support/fed_sensor.hpp"
#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/renderer.hpp"
#include "virtual_kinect/room/story.hpp"

namespace halcyra {
namespace {

namespace room = virtual_kinect::room;

// How far the middle of a face box may be from the middle of the head, in millimetres.
constexpr float kHeadReach = 130.0F;

room::Vec3 head_of(const room::Presence& presence) {
  return room::head_position(room::look_of(presence.person).body, presence.posture);
}

bool is_in_view(const room::Presence& presence) {
  const room::Vec3 head = head_of(presence);
  const float column = room::kColorCamera.column(head);
  return column >= 0.0F && column < static_cast<float>(room::kColorCamera.width);
}

// The person whose head is at the middle of a box; of several the nearest, who hides the others.
std::optional<room::Person> person_at(const cv::Rect& box, const room::Moment& moment) {
  const float x = static_cast<float>(box.x) + 0.5F * static_cast<float>(box.width);
  const float y = static_cast<float>(box.y) + 0.5F * static_cast<float>(box.height);
  std::optional<room::Person> person;
  float nearest = 1e9F;
  for (const room::Presence& presence : moment.people) {
    const room::Vec3 head = head_of(presence);
    const float pixels =
        std::hypot(room::kColorCamera.column(head) - x, room::kColorCamera.row(head) - y);
    if (pixels * head.z / room::kColorCamera.focal < kHeadReach && head.z < nearest) {
      person = presence.person;
      nearest = head.z;
    }
  }
  return person;
}

std::size_t heads_in_view(const room::Moment& moment) {
  return static_cast<std::size_t>(
      std::count_if(moment.people.begin(), moment.people.end(), is_in_view));
}

std::chrono::duration<double> seconds(std::uint64_t sets) {
  return std::chrono::duration<double>(static_cast<double>(sets) /
                                       static_cast<double>(room::kSetsPerSecond));
}

// Feeds one turn's colour picture to the program. Infrared and depth are blank, as no test looks at
// them.
void show(ControlCenter& center, const cv::Mat& color) {
  static const cv::Mat kBlank = cv::Mat::zeros(1, 1, CV_32FC1);
  feed_set(center.kinect, color, kBlank, kBlank);
}

StoryTurn take_turn(ControlCenter& center, const room::Moment& moment) {
  StoryTurn turn;
  turn.heads_in_view = heads_in_view(moment);
  for (const FaceInfo& face : observe_room(center)) {
    turn.faces.push_back({face, person_at(face.box, moment)});
  }
  turn.room = center.status.room;
  return turn;
}

// The story's own clock, which stands still between the turns. It begins at one hour, so that
// nothing takes its first reading for "never".
std::chrono::steady_clock::time_point g_story_time{std::chrono::hours(1)};

std::chrono::steady_clock::time_point story_time() { return g_story_time; }

void prepare(ControlCenter& center, const std::filesystem::path& samples) {
  write_owner_samples(samples);
  center.options.samples_dir = samples.string();
  center.options.status_refresh_frames = std::numeric_limits<std::int32_t>::max();
  center.loop.frame_count = 1;  // the services are asked on the first frame, and not here
  center.loop.start = story_time();
  center.now = story_time;
  load_detectors(center.detectors, center.options, center.status);
  train_recognizer(center.recognition, center.options, center.status);
  start_fed_sensor(center.kinect);
}

}  // namespace

std::vector<StoryTurn> watch_story(const std::filesystem::path& folder, std::uint64_t step) {
  ControlCenter center;
  prepare(center, folder);
  const room::Renderer renderer(room::kUsualSeed);
  std::vector<StoryTurn> turns;
  const auto start = story_time();
  for (std::uint64_t delivered = 0; delivered < room::kStorySets; delivered += step) {
    g_story_time = start + std::chrono::duration_cast<std::chrono::nanoseconds>(seconds(delivered));
    const std::uint64_t set = room::kOpeningSet + delivered;
    const room::Moment moment = room::moment_at(set);
    show(center, renderer.render_color(moment, set));
    turns.push_back(take_turn(center, moment));
    turns.back().time = seconds(set % room::kStorySets).count();
  }
  return turns;
}

}  // namespace halcyra
