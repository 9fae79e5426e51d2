#include "dashboard/status_cards.hpp"

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

void expect_card(const StatusCard& actual, const StatusCard& expected) {
  EXPECT_EQ(actual.title, expected.title);
  EXPECT_EQ(actual.state, expected.state);
  EXPECT_EQ(actual.detail, expected.detail);
  EXPECT_EQ(actual.impact, expected.impact);
  EXPECT_EQ(actual.action, expected.action);
}

StatusCard card(const RuntimeStatus& status, std::size_t place) {
  const std::vector<StatusCard> cards = status_cards(status);
  return place < cards.size() ? cards[place] : StatusCard{};
}

TEST(StatusCards, AreNineInAFixedOrder) {
  std::vector<std::string> titles;
  for (const StatusCard& card : status_cards({})) titles.push_back(card.title);
  EXPECT_EQ(titles, (std::vector<std::string>{
                        "Kinect Camera", "Skeleton Tracking", "Face Fallback", "Face Recognition",
                        "Room Awareness", "Audio Direction", "Depth", "IR", "Package Runtime"}));
}

TEST(KinectCard, IsGoodWithSensorAndStream) {
  RuntimeStatus status;
  status.kinect_connected = true;
  status.rgb_ok = true;
  status.kinect_message = "Kinect RGB/IR/Depth streams running";
  expect_card(card(status, 0), {"Kinect Camera", "OK", "Kinect RGB/IR/Depth streams running",
                                "RGB preview is live.", "Continue finite validation runs."});
}

TEST(KinectCard, NeedsSensorAndStream) {
  RuntimeStatus status;
  status.kinect_message = "no Kinect v2 device detected";
  const StatusCard missing = {"Kinect Camera", "unavailable", "no Kinect v2 device detected",
                              "Camera preview cannot be trusted right now.",
                              "Check USB, permissions, or close other Kinect clients."};
  expect_card(card(status, 0), missing);
  status.kinect_connected = true;
  expect_card(card(status, 0), missing);
}

TEST(KinectCard, TakesImpactAndActionFromTheStreamAlone) {
  RuntimeStatus status;
  status.rgb_ok = true;
  status.kinect_message = "starting";
  expect_card(card(status, 0), {"Kinect Camera", "unavailable", "starting", "RGB preview is live.",
                                "Continue finite validation runs."});
}

TEST(SkeletonCard, TellsWhetherSkeletonsAreTracked) {
  RuntimeStatus status;
  status.skeleton_message = "no tracker here";
  expect_card(card(status, 1),
              {"Skeleton Tracking", "degraded", "no tracker here",
               "Control Center uses face fallback for room awareness.",
               "Integrate a real Kinect skeleton tracker before enabling skeleton mode."});
  status.skeleton_available = true;
  expect_card(card(status, 1), {"Skeleton Tracking", "OK", "Skeleton/person joints available.",
                                "Normal overlay can use skeletons.", "Validate joint stability."});
}

StatusCard face_fallback_card(const std::string& state, const std::string& detail) {
  return {"Face Fallback", state, detail, "Used only because skeleton tracking is unavailable.",
          "Keep lighting even; do not treat fallback as security."};
}

TEST(FaceFallbackCard, TellsWhetherAFaceIsInView) {
  RuntimeStatus status;
  const std::string nobody = "No fallback face target currently visible.";
  expect_card(card(status, 2), face_fallback_card("unavailable", nobody));
  status.rgb_ok = true;
  expect_card(card(status, 2), face_fallback_card("fallback", nobody));
  status.room.people = 1;
  expect_card(card(status, 2), face_fallback_card("fallback", nobody));
  status.room.faces = 1;
  const StatusCard visible = face_fallback_card("OK", "Face fallback has visible targets.");
  expect_card(card(status, 2), visible);
  status.rgb_ok = false;
  expect_card(card(status, 2), visible);
}

StatusCard recognition_card(const std::string& state, const std::string& detail) {
  return {"Face Recognition", state, detail, "Owner identity remains a convenience signal only.",
          "Do not use for access control."};
}

TEST(FaceRecognitionCard, TellsWhetherTheOwnerIsInView) {
  RuntimeStatus status;
  expect_card(card(status, 3),
              recognition_card("degraded", "No current Dorran recognition result."));
  status.room.owner_visible = true;
  expect_card(card(status, 3), recognition_card("OK", "Dorran visible in current room state."));
}

StatusCard room_card(const std::string& state) {
  return {"Room Awareness", state, "why this mode",
          "View mode adapts between scan, follow, and overview.",
          "Use room overview when multiple people are present."};
}

TEST(RoomCard, TellsWhetherAnybodyIsInView) {
  RuntimeStatus status;
  status.room.reason = "why this mode";
  status.room.faces = 1;
  expect_card(card(status, 4), room_card("degraded"));
  status.room.people = 1;
  expect_card(card(status, 4), room_card("OK"));
}

StatusCard audio_card(const std::string& state) {
  return {"Audio Direction", state, "unmatched voice left",
          "Direction guides attention only, not trust or identity.",
          "Restart Sonmere if direction data is stale."};
}

TEST(AudioCard, TellsWhetherTheVoiceServiceRuns) {
  RuntimeStatus status;
  status.room.voice_match = "unmatched voice left";
  status.voice.live_running = true;  // the card reads the service's own words
  for (const char* words : {"unknown", "", "stopped", "Running", "run"}) {
    status.voice.live_processing = words;
    expect_card(card(status, 5), audio_card("fallback"));
  }
  for (const char* words : {"running", "not running", "running since 10:00"}) {
    status.voice.live_processing = words;
    expect_card(card(status, 5), audio_card("OK"));
  }
}

TEST(DepthCard, TellsWhetherDepthWasEverSeen) {
  RuntimeStatus status;
  status.depth_message = "waiting for depth frames";
  status.ir_ok = true;
  StatusCard expected = {"Depth", "degraded", "waiting for depth frames",
                         "Distance estimates are unavailable in this pass.",
                         "Use Protonect path until embedded depth is added."};
  expect_card(card(status, 6), expected);
  status.ir_ok = false;
  status.depth_ok = true;
  expected.state = "OK";
  expected.detail = "Depth stream embedded.";
  expect_card(card(status, 6), expected);
}

TEST(InfraredCard, TellsWhetherInfraredWasEverSeen) {
  RuntimeStatus status;
  status.ir_message = "waiting for IR frames";
  status.depth_ok = true;
  StatusCard expected = {"IR", "degraded", "waiting for IR frames",
                         "Low-light preview is unavailable in this pass.",
                         "Use Protonect path until embedded IR is added."};
  expect_card(card(status, 7), expected);
  status.depth_ok = false;
  status.ir_ok = true;
  expected.state = "OK";
  expected.detail = "IR stream embedded.";
  expect_card(card(status, 7), expected);
}

TEST(PackageCard, IsAlwaysGood) {
  expect_card(card({}, 8), {"Package Runtime", "OK", "Runtime binaries and wrappers are local.",
                            "Package can be tested before Corvane transfer.",
                            "Run staged package test after rebuild."});
}

}  // namespace
}  // namespace halcyra
