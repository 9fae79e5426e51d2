#include "tests/golden/scenes.hpp"

#include "face_pipeline/person_identity.hpp"
#include "tests/golden/room_pictures.hpp"

namespace halcyra {
namespace {

FaceInfo face(int person, int people, const std::string& label, const std::string& detector) {
  FaceInfo face =
      test_face(person, face_in_room(person, people), person_color_for(person - 1, label));
  face.label = label;
  face.detector_type = detector;
  return face;
}

// A running sensor and a voice service that hears somebody.
RuntimeStatus running_status() {
  RuntimeStatus status;
  status.kinect_connected = true;
  status.rgb_ok = true;
  status.ir_ok = true;
  status.depth_ok = true;
  status.kinect_message = "Kinect RGB/IR/Depth streams running";
  status.ir_message = "IR stream running";
  status.depth_message = "Depth stream running";
  status.voice.live_processing = "running";
  status.voice.live_running = true;
  status.voice.direction_angle = "-8.5";
  status.voice.direction_confidence = "0.81";
  status.events = {"10:15:42  Person appeared: 1",
                   "10:15:41  No person visible",
                   "10:15:41  RGB/IR/Depth streams started",
                   "10:15:40  Kinect connected: 011234567847",
                   "10:15:39  Dorran recognition samples loaded: 24",
                   "10:15:39  Voice and Corvane status refreshed",
                   "10:15:39  Skeleton unavailable, face fallback active",
                   "10:15:39  Control Center launched"};
  return status;
}

TestScene scene_with(int people, const std::string& view) {
  TestScene scene;
  const RoomPictures pictures = room_pictures(people);
  scene.color = pictures.color;
  scene.infrared = pictures.infrared;
  scene.depth = pictures.depth;
  scene.status = running_status();
  scene.options.view = view;
  scene.status.room.people = people;
  scene.status.room.faces = people;
  scene.status.room.unknown_people = people;
  return scene;
}

TestScene one_stranger(const std::string& view) {
  TestScene scene = scene_with(1, view);
  scene.faces = {face(1, 1, "Unknown", "frontal")};
  RoomAwareness& room = scene.status.room;
  room.target = "visible person";
  room.view_mode = view;
  room.reason = "operator selected " + view_label(view) + " view";
  room.voice_match = "voice direction matched Person 1";
  return scene;
}

TestScene followed_person(const std::string& view, const std::string& label) {
  TestScene scene = one_stranger(view);
  scene.faces = {face(1, 1, label, "frontal")};
  const std::string name = person_display_name(scene.faces.front());
  RoomAwareness& room = scene.status.room;
  room.owner_visible = is_owner_label(label);
  room.unknown_people = room.owner_visible ? 0 : 1;
  room.target = name;
  room.view_mode = "follow";
  room.reason = "following face center because skeleton is unavailable";
  room.voice_match = "voice direction matched " + name;
  scene.status.events.push_front("10:15:43  Follow mode active: " + name);
  return scene;
}

TestScene owner_and_stranger(const std::string& view) {
  TestScene scene = scene_with(2, view);
  scene.faces = {face(1, 2, "ConfirmedDorran", "frontal"), face(2, 2, "Unknown", "profile_right")};
  RoomAwareness& room = scene.status.room;
  room.owner_visible = true;
  room.unknown_people = 1;
  room.target = "Dorran";
  room.view_mode = "room_overview";
  room.reason = "multiple people visible; keeping wide overview";
  room.voice_match = "voice direction matched Dorran";
  scene.status.voice.direction_angle = "-21.5";
  scene.status.events.push_front("10:15:44  Multiple people visible");
  scene.status.events.push_front("10:15:44  Dorran visible");
  scene.status.events.push_front("10:15:44  voice direction matched Dorran");
  return scene;
}

TestScene nobody(const std::string& view, const std::string& reason) {
  TestScene scene = scene_with(0, view);
  RoomAwareness& room = scene.status.room;
  room.fallback = "degraded";
  room.reason = reason;
  room.voice_match = "unmatched voice center-left";
  scene.status.events.pop_front();
  return scene;
}

}  // namespace

TestScene rgb_scene() { return one_stranger("rgb"); }

TestScene infrared_scene() { return one_stranger("ir"); }

TestScene depth_scene() { return one_stranger("depth"); }

TestScene skeletal_scene() { return one_stranger("skeletal"); }

TestScene combo_scene() { return followed_person("combo", "Unknown"); }

TestScene room_overview_scene() { return owner_and_stranger("room_overview"); }

TestScene follow_owner_scene() { return followed_person("follow", "ConfirmedDorran"); }

TestScene debug_scene() {
  TestScene scene = owner_and_stranger("combo");
  scene.options.debug = true;
  scene.faces[1].quality = "too_blurry";
  return scene;
}

TestScene nobody_scene() {
  TestScene scene = nobody("combo", "no person detected; wide room scan active");
  scene.infrared.release();
  scene.status.ir_ok = false;
  scene.status.ir_message = "IR frame unavailable or not convertible";
  scene.status.voice.direction_confidence = "0.31";
  scene.status.room.voice_match = "low confidence center-left";
  return scene;
}

TestScene skeletal_nobody_scene() {
  TestScene scene = nobody("skeletal", "operator selected SKELETAL; no person detected");
  scene.status.room.view_mode = "skeletal";
  return scene;
}

TestScene tracking_scene() {
  TestScene scene = owner_and_stranger("combo");
  scene.status.skeleton_available = true;
  scene.status.room.skeletons = 2;
  scene.status.room.fallback = "skeleton";
  return scene;
}

TestScene degraded_start_scene() {
  TestScene scene;
  scene.status.kinect_message = "no Kinect v2 device detected";
  RoomAwareness& room = scene.status.room;
  room.fallback = "degraded";
  room.reason = "no person detected; wide room scan active";
  scene.status.events = {"10:15:40  Wide room scan active",
                         "10:15:40  No person visible",
                         "10:15:40  No Kinect v2 device detected",
                         "10:15:39  Recognition samples unavailable",
                         "10:15:39  Profile cascade unavailable; profile detection fallback",
                         "10:15:39  Frontal cascade unavailable",
                         "10:15:39  Voice and Corvane status refreshed",
                         "10:15:39  Skeleton unavailable, face fallback active",
                         "10:15:39  Control Center launched"};
  return scene;
}

TestScene infrared_missing_scene() {
  TestScene scene = nobody("ir", "operator selected IR; no person detected");
  scene.infrared.release();
  scene.status.ir_ok = false;
  scene.status.ir_message = "waiting for IR frames";
  scene.status.room.view_mode = "ir";
  return scene;
}

TestScene depth_missing_scene() {
  TestScene scene = degraded_start_scene();
  scene.options.view = "depth";
  scene.status.kinect_connected = true;
  scene.status.kinect_message = "failed to start RGB/IR/Depth streams";
  scene.status.ir_message = "Kinect stream start failed";
  scene.status.depth_message = "Kinect stream start failed";
  scene.status.room.view_mode = "depth";
  scene.status.room.reason = "operator selected DEPTH; no person detected";
  scene.status.events.pop_front();
  scene.status.events[1] = "10:15:40  RGB/IR/Depth stream start failed";
  return scene;
}

TestScene more_than_fits_scene() {
  TestScene scene = followed_person("combo", "CandidateDorran");
  scene.status.room.reason =
      "tracking uncertain; holding room_overview before switching to follow, and a reason that "
      "goes on for longer than two lines of the panel can ever hold at any size of the window";
  scene.status.room.target = "everybody who stands in front of the sensor at the moment";
  scene.status.voice.live_processing = "running since this morning without any interruption";
  scene.status.kinect_message = "timeout waiting for Kinect frame; " + scene.status.room.reason;
  scene.status.events.push_front(
      "10:16:00  Layout test image written: captures/control-center-layout-test-1440x810.png");
  scene.status.events.push_front("10:16:01  Debug boxes/detail disabled");
  return scene;
}

TestScene without_face_boxes_scene() {
  TestScene scene = owner_and_stranger("room_overview");
  scene.options.face_boxes = false;
  scene.options.mic_hud = false;
  return scene;
}

TestScene ambiguous_speaker_scene() {
  TestScene scene = owner_and_stranger("rgb");
  scene.status.voice.direction_angle = "46";
  scene.status.room.voice_match = "ambiguous speaker far right";
  scene.status.events.front() = "10:15:44  ambiguous speaker far right";
  return scene;
}

}  // namespace halcyra
