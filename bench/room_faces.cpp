#include "bench/room_faces.hpp"

#include <cmath>

#include <opencv2/imgproc.hpp>

#include "face_pipeline/face_detection.hpp"
#include "virtual_kinect/room/person_model.hpp"
#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/story.hpp"

namespace halcyra {
namespace {

namespace room = virtual_kinect::room;

// From the middle of a box to that of the head, as a share of the box's width. The profile cascade
// puts a head far out of the middle.
constexpr double kMostOffset = 0.8;

std::optional<room::Person> whose_face(const cv::Rect& box, const room::Moment& moment) {
  std::optional<room::Person> nearest;
  double least = kMostOffset;
  for (const room::Presence& presence : moment.people) {
    const room::Vec3 head =
        room::head_position(room::look_of(presence.person).body, presence.posture);
    const double dx = room::kColorCamera.column(head) - (box.x + box.width / 2.0);
    const double dy = room::kColorCamera.row(head) - (box.y + box.height / 2.0);
    const double offset = std::hypot(dx, dy) / box.width;
    if (offset < least) {
      least = offset;
      nearest = presence.person;
    }
  }
  return nearest;
}

}  // namespace

RoomPicture look_at_room(const room::Renderer& renderer, FaceDetectors& detectors,
                         std::uint64_t set) {
  const room::Moment moment = room::moment_at(set);
  RoomPicture picture;
  picture.set = set;
  cv::cvtColor(renderer.render_color(moment, set), picture.grey, cv::COLOR_BGRA2GRAY);
  picture.detections = detect_multi(detectors.frontal, &detectors.profile, picture.grey, {});
  for (const Detection& detection : picture.detections) {
    picture.people.push_back(whose_face(detection.box, moment));
  }
  return picture;
}

}  // namespace halcyra
