#include "tests/virtual_kinect/watched_story.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "app/options.hpp"
#include "app/runtime_status.hpp"
#include "awareness/update_room_awareness.hpp"
#include "capture/frame_conversion.hpp"
#include "face_pipeline/face_analysis.hpp"
#include "face_pipeline/face_detection.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "face_pipeline/owner_recognition.hpp"
#include "tests/virtual_kinect/story_clock.hpp"
#include "virtual_kinect/room/owner_samples.hpp"
#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/renderer.hpp"
#include "virtual_kinect/room/room_source.hpp"
#include "virtual_kinect/room/story.hpp"

namespace halcyra {
namespace {

namespace room = virtual_kinect::room;

// Millimetres from the middle of a head within which the middle of its face is found.
constexpr float kHeadReach = 130.0F;

struct Watcher {
  Options options;
  RuntimeStatus status;
  FaceDetectors detectors;
  RecognitionState recognition;
};

room::Vec3 head_of(const room::Presence& presence) {
  return room::head_position(room::look_of(presence.person).body, presence.posture);
}

bool is_in_view(const room::Presence& presence) {
  const room::Vec3 head = head_of(presence);
  const float column = room::kColorCamera.column(head);
  return column >= 0.0F && column < static_cast<float>(room::kColorCamera.width);
}

// The person whose head the middle of a box lies on; of several the nearest, who hides the others.
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

// As a cycle of the program does it.
StoryTurn take_turn(Watcher& watcher, const cv::Mat& color, const room::Moment& moment) {
  const ColorImages images = color_images(color, ChannelOrder::bgrx);
  const std::vector<Detection> detections = detect_multi(
      watcher.detectors.frontal, &watcher.detectors.profile, images.grey, watcher.options);
  const std::vector<FaceInfo> faces =
      analyze_faces(detections, images.grey, watcher.recognition, watcher.status, watcher.options);
  update_room_awareness(watcher.status, faces, watcher.options, images.bgr.cols);
  StoryTurn turn;
  turn.heads_in_view = heads_in_view(moment);
  for (const FaceInfo& face : faces) {
    turn.faces.push_back({face, person_at(face.box, moment)});
  }
  turn.room = watcher.status.room;
  return turn;
}

}  // namespace

std::vector<StoryTurn> watch_story(const std::filesystem::path& folder, std::uint64_t step) {
  room::write_owner_samples(folder);
  Watcher watcher;
  watcher.options.samples_dir = folder.string();
  load_detectors(watcher.detectors, watcher.options, watcher.status);
  train_recognizer(watcher.recognition, watcher.options, watcher.status);
  const room::Renderer renderer(room::kUsualSeed);
  std::vector<StoryTurn> turns;
  for (std::uint64_t delivered = 0; delivered < room::kStorySets; delivered += step) {
    set_story_time(std::chrono::duration_cast<std::chrono::nanoseconds>(seconds(delivered)));
    const std::uint64_t set = room::kOpeningSet + delivered;
    const room::Moment moment = room::moment_at(set);
    turns.push_back(take_turn(watcher, renderer.render_color(moment, set), moment));
    turns.back().time = seconds(set % room::kStorySets).count();
  }
  return turns;
}

}  // namespace halcyra
