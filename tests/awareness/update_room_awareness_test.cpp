#include "awareness/update_room_awareness.hpp"

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "tests/awareness/faces.hpp"

namespace halcyra {
namespace {

constexpr int kFrameWidth = 1920;
constexpr const char* kCandidate = "CandidateDorran";
constexpr const char* kConfirmed = "ConfirmedDorran";

const Faces kNobody;

constexpr std::chrono::steady_clock::time_point kNow{std::chrono::hours(100)};

RoomAwareness room_of(const std::string& view, const Faces& faces, RuntimeStatus status = {},
                      int frame_width = kFrameWidth, ModeHoldBack hold = {}) {
  Options options;
  options.view = view;
  update_room_awareness(status, faces, options, frame_width, hold, kNow);
  return status.room;
}

// The same after a turn that showed `mode`.
RoomAwareness room_after(const std::string& mode, const std::string& view, const Faces& faces,
                         const RuntimeStatus& status = {}) {
  return room_of(view, faces, status, kFrameWidth, {mode, mode, kNow, kNow});
}

void expect_attention(const RoomAwareness& room, const std::string& mode, const std::string& target,
                      const std::string& reason) {
  EXPECT_EQ(room.view_mode, mode);
  EXPECT_EQ(room.target, target);
  EXPECT_EQ(room.reason, reason);
}

void expect_counts(const RoomAwareness& room, int people, bool owner_visible, int unknown_people) {
  EXPECT_EQ(room.people, people);
  EXPECT_EQ(room.faces, people);
  EXPECT_EQ(room.owner_visible, owner_visible);
  EXPECT_EQ(room.unknown_people, unknown_people);
}

RuntimeStatus with_skeletons() {
  RuntimeStatus status;
  status.skeleton_available = true;
  return status;
}

TEST(UpdateRoomAwareness, CountsPeople) {
  expect_counts(room_of("rgb", kNobody), 0, false, 0);
  expect_counts(room_of("rgb", {face(1)}), 1, false, 1);
  expect_counts(room_of("rgb", {face(1), face(2), face(3)}), 3, false, 3);
}

TEST(UpdateRoomAwareness, TakesOneFromTheUnknownForTheOwner) {
  expect_counts(room_of("rgb", {face(1, kConfirmed)}), 1, true, 0);
  expect_counts(room_of("rgb", {face(1, kCandidate)}), 1, true, 0);
  expect_counts(room_of("rgb", {face(1), face(2, kCandidate), face(3)}), 3, true, 2);
  expect_counts(room_of("rgb", {face(1, kConfirmed), face(2, kCandidate)}), 2, true, 1);
  expect_counts(room_of("rgb", {face(1, "xDorranx")}), 1, true, 0);
}

TEST(UpdateRoomAwareness, KnowsTheOwnerByTheLettersAsTheyAre) {
  for (const std::string label : {"Unknown", "dorran", "DORRAN", "Dorra", "ConfirmedDor ran", ""}) {
    expect_counts(room_of("rgb", {face(1, label)}), 1, false, 1);
  }
}

TEST(UpdateRoomAwareness, HasNoSkeletonsWithoutATracker) {
  EXPECT_EQ(room_of("rgb", kNobody).skeletons, 0);
  EXPECT_EQ(room_of("rgb", {face(1), face(2)}).skeletons, 0);
  EXPECT_EQ(room_of("rgb", kNobody).fallback, "degraded");
  EXPECT_EQ(room_of("rgb", {face(1)}).fallback, "face");
  EXPECT_EQ(room_of("rgb", {face(1), face(2)}).fallback, "face");
}

TEST(UpdateRoomAwareness, CountsSkeletonsWithATracker) {
  EXPECT_EQ(room_of("rgb", kNobody, with_skeletons()).skeletons, 0);
  EXPECT_EQ(room_of("rgb", {face(1), face(2)}, with_skeletons()).skeletons, 2);
  EXPECT_EQ(room_of("rgb", kNobody, with_skeletons()).fallback, "skeleton");
  EXPECT_EQ(room_of("rgb", {face(1)}, with_skeletons()).fallback, "skeleton");
}

TEST(UpdateRoomAwareness, ScansTheRoomWhileNobodyIsThere) {
  for (const std::string view : {"combo", ""}) {
    expect_attention(room_after("scan", view, kNobody), "scan", "none",
                     "no person detected; wide room scan active");
  }
}

struct OperatorView {
  const char* view;
  const char* label;
};

constexpr OperatorView kOperatorViews[] = {
    {"rgb", "RGB"}, {"ir", "IR"}, {"depth", "DEPTH"}, {"skeletal", "SKELETAL"}, {"other", "COMBO"}};

TEST(UpdateRoomAwareness, KeepsAnOperatorViewWhileNobodyIsThere) {
  for (const OperatorView& row : kOperatorViews) {
    expect_attention(room_of(row.view, kNobody), row.view, "none",
                     std::string("operator selected ") + row.label + "; no person detected");
  }
  expect_attention(room_of("room_overview", kNobody), "room_overview", "none",
                   "operator selected ROOM OVERVIEW; no person detected");
  expect_attention(room_after("follow", "follow", kNobody), "follow", "none",
                   "operator selected FOLLOW; no person detected");
}

TEST(UpdateRoomAwareness, KeepsAnOperatorViewForOnePerson) {
  for (const OperatorView& row : kOperatorViews) {
    const std::string reason = std::string("operator selected ") + row.label + " view";
    expect_attention(room_of(row.view, {face(1)}), row.view, "visible person", reason);
    expect_attention(room_of(row.view, {face(1, kCandidate)}), row.view, "Dorran", reason);
  }
}

TEST(UpdateRoomAwareness, OverlooksTheRoomForSeveralPeopleInEveryView) {
  const std::string reason = "multiple people visible; keeping wide overview";
  for (const std::string view :
       {"rgb", "ir", "depth", "skeletal", "room_overview", "", "combo", "follow"}) {
    expect_attention(room_after("room_overview", view, {face(1), face(2)}), "room_overview",
                     "all visible people", reason);
    expect_attention(room_after("room_overview", view, {face(1), face(2), face(3, kConfirmed)}),
                     "room_overview", "Dorran", reason);
  }
}

TEST(UpdateRoomAwareness, OverlooksTheRoomForOnePersonWhenAsked) {
  expect_attention(room_of("room_overview", {face(1)}), "room_overview", "all visible people",
                   "room overview requested");
  expect_attention(room_of("room_overview", {face(1, kConfirmed)}), "room_overview", "Dorran",
                   "room overview requested");
}

TEST(UpdateRoomAwareness, FollowsOnePerson) {
  const std::string reason = "following face center because skeleton is unavailable";
  for (const std::string view : {"combo", "follow", ""}) {
    expect_attention(room_after("follow", view, {face(2)}), "follow", "Person 2", reason);
    expect_attention(room_after("follow", view, {face(0)}), "follow", "Unknown", reason);
    expect_attention(room_after("follow", view, {face(-1)}), "follow", "Unknown", reason);
    expect_attention(room_after("follow", view, {face(0, kCandidate)}), "follow", "Dorran", reason);
    expect_attention(room_after("follow", view, {face(2)}, with_skeletons()), "follow", "Person 2",
                     "following skeleton/person center");
  }
}

TEST(UpdateRoomAwareness, HoldsANewAutomaticModeBack) {
  expect_attention(room_after("scan", "combo", {face(3)}), "scan", "Person 3",
                   "tracking uncertain; holding scan before switching to follow");
  expect_attention(room_after("scan", "follow", {face(1), face(2)}), "scan", "all visible people",
                   "tracking uncertain; holding scan before switching to room_overview");
  expect_attention(room_after("follow", "combo", kNobody), "follow", "none",
                   "tracking uncertain; holding follow before switching to scan");
  expect_attention(room_after("scan", "follow", kNobody), "scan", "none",
                   "tracking uncertain; holding scan before switching to follow");
}

// It counts as "combo", but as neither of the views that hold a mode back.
TEST(UpdateRoomAwareness, HoldsNothingBackInAViewWithoutAName) {
  expect_attention(room_after("scan", "", {face(3)}), "follow", "Person 3",
                   room_after("follow", "combo", {face(3)}).reason);
}

TEST(UpdateRoomAwareness, KeepsTheCountsAndTheFallbackOfAModeHeldBack) {
  const RoomAwareness empty = room_after("follow", "combo", kNobody);
  EXPECT_EQ(empty.fallback, "degraded");
  expect_counts(empty, 0, false, 0);
  const RoomAwareness owner = room_after("scan", "combo", {face(1, kConfirmed)});
  EXPECT_EQ(owner.fallback, "face");
  expect_counts(owner, 1, true, 0);
}

TEST(UpdateRoomAwareness, GoesOnFromTheModeThatTheOperatorSaw) {
  RuntimeStatus status;
  Options options;
  ModeHoldBack hold;
  options.view = "depth";
  update_room_awareness(status, {face(1)}, options, kFrameWidth, hold, kNow);
  options.view = "combo";
  update_room_awareness(status, {face(1)}, options, kFrameWidth, hold, kNow);
  expect_attention(status.room, "depth", "Person 1",
                   "tracking uncertain; holding depth before switching to follow");
}

std::string voice_match(const std::string& angle, const std::string& confidence, const Faces& faces,
                        int frame_width, bool low_confidence = false) {
  RuntimeStatus status;
  hear(status, angle, confidence, low_confidence);
  return room_of("rgb", faces, status, frame_width).voice_match;
}

// A face without width in the middle of a frame of 1000 pixels: at 0 degrees.
const Faces kMiddle = {face(1, "Unknown", 500)};

TEST(UpdateRoomAwareness, HearsNothingWithoutAnAngle) {
  for (const std::string angle : {"unknown", "", "nan", "inf", "-inf", "1e999"}) {
    EXPECT_EQ(voice_match(angle, "0.9", kMiddle, 1000), "no voice direction") << angle;
    EXPECT_EQ(voice_match(angle, "unknown", kNobody, 1000, true), "no voice direction") << angle;
  }
}

TEST(UpdateRoomAwareness, DoesNotTrustALowConfidence) {
  EXPECT_EQ(voice_match("-30", "unknown", kMiddle, 1000), "low confidence left");
  EXPECT_EQ(voice_match("0", "0.449", kMiddle, 1000), "low confidence center-right");
  EXPECT_EQ(voice_match("0", "0.9", kMiddle, 1000, true), "low confidence center-right");
  EXPECT_EQ(voice_match("-50", "inf", kMiddle, 1000), "low confidence far left");
  EXPECT_EQ(voice_match("50", "0.1", kNobody, 1000), "low confidence far right");
}

TEST(UpdateRoomAwareness, MatchesFromAConfidenceOf0Point45On) {
  EXPECT_EQ(voice_match("0", "0.45", kMiddle, 1000), "voice direction matched Person 1");
}

TEST(UpdateRoomAwareness, HasNoMatchWithoutAFaceThere) {
  EXPECT_EQ(voice_match("30", "0.9", kNobody, 1000), "unmatched voice right");
  EXPECT_EQ(voice_match("30", "0.9", kMiddle, 1000), "unmatched voice right");
  EXPECT_EQ(voice_match("-19", "0.9", kMiddle, 1000), "unmatched voice center-left");
}

TEST(UpdateRoomAwareness, MatchesUpTo18DegreesOnBothSides) {
  EXPECT_EQ(voice_match("18", "0.9", kMiddle, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("-18", "0.9", kMiddle, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("18.000001", "0.9", kMiddle, 1000), "unmatched voice center-right");
  EXPECT_EQ(voice_match("-18.000001", "0.9", kMiddle, 1000), "unmatched voice center-left");
}

TEST(UpdateRoomAwareness, SpansTheFrameFromMinus55To55Degrees) {
  const Faces left = {face(1, "Unknown", 0)};
  EXPECT_EQ(voice_match("-73", "0.9", left, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("-37", "0.9", left, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("-73.01", "0.9", left, 1000), "unmatched voice far left");
  EXPECT_EQ(voice_match("-36.99", "0.9", left, 1000), "unmatched voice left");
  const Faces right = {face(1, "Unknown", 1000)};
  EXPECT_EQ(voice_match("73", "0.9", right, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("37", "0.9", right, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("36.99", "0.9", right, 1000), "unmatched voice right");
}

// Half a pixel counts: this face is at -27.5 degrees, not at the frame's edge.
TEST(UpdateRoomAwareness, TakesTheMiddleOfAFace) {
  const Faces narrow = {face(1, "Unknown", 0, 1)};
  EXPECT_EQ(voice_match("-9.5", "0.9", narrow, 2), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("-9.4999", "0.9", narrow, 2), "unmatched voice center-left");
  const Faces wide = {face(1, "Unknown", 100, 800)};
  EXPECT_EQ(voice_match("18", "0.9", wide, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("18.1", "0.9", wide, 1000), "unmatched voice center-right");
}

TEST(UpdateRoomAwareness, TakesEveryFaceForTheMiddleWithoutAFrame) {
  const Faces apart = {face(1, "Unknown", 0, 10), face(2, "Unknown", 900, 10)};
  for (const int frame_width : {0, -1, -1000}) {
    EXPECT_EQ(voice_match("10", "0.9", apart, frame_width), "ambiguous speaker center-right");
    EXPECT_EQ(voice_match("18", "0.9", {apart[1]}, frame_width),
              "voice direction matched Person 2");
    EXPECT_EQ(voice_match("-18.1", "0.9", apart, frame_width), "unmatched voice center-left");
  }
  EXPECT_EQ(voice_match("-55", "0.9", {face(1)}, 1), "voice direction matched Person 1");
}

TEST(UpdateRoomAwareness, NamesTheOneFaceThatMatches) {
  const Faces three = {face(1, "Unknown", 0), face(2, kCandidate, 500), face(0, "Unknown", 1000)};
  EXPECT_EQ(voice_match("-55", "0.9", three, 1000), "voice direction matched Person 1");
  EXPECT_EQ(voice_match("5", "0.9", three, 1000), "voice direction matched Dorran");
  EXPECT_EQ(voice_match("55", "0.9", three, 1000), "voice direction matched Unknown");
  EXPECT_EQ(voice_match("-27.5", "0.9", three, 1000), "unmatched voice left");
}

TEST(UpdateRoomAwareness, DoesNotChooseBetweenTwoMatches) {
  const Faces close = {face(1, "Unknown", 490), face(2, kConfirmed, 500), face(3, "Unknown", 999)};
  EXPECT_EQ(voice_match("0", "0.9", close, 1000), "ambiguous speaker center-right");
  EXPECT_EQ(voice_match("-1", "0.9", close, 1000), "ambiguous speaker center-left");
  const Faces crowd(5, face(1, "Unknown", 500));
  EXPECT_EQ(voice_match("-18", "0.9", crowd, 1000), "ambiguous speaker center-left");
}

TEST(UpdateRoomAwareness, MatchesTheVoiceWhateverTheMode) {
  RuntimeStatus status;
  hear(status, "0", "0.9");
  for (const std::string view : {"combo", "follow", "room_overview", "depth", ""}) {
    EXPECT_EQ(room_of(view, kMiddle, status, 1000).voice_match, "voice direction matched Person 1");
  }
}

TEST(UpdateRoomAwareness, RewritesTheWholeRecord) {
  RuntimeStatus status;
  status.room = {7, 8, 9, true, 6, "Dorran", "follow", "skeleton", "earlier", "earlier voice"};
  const RoomAwareness room = room_of("depth", kNobody, status);
  expect_counts(room, 0, false, 0);
  EXPECT_EQ(room.skeletons, 0);
  EXPECT_EQ(room.fallback, "degraded");
  expect_attention(room, "depth", "none", "operator selected DEPTH; no person detected");
  EXPECT_EQ(room.voice_match, "no voice direction");
}

TEST(UpdateRoomAwareness, LogsNothing) {
  RuntimeStatus status;
  ModeHoldBack hold;
  update_room_awareness(status, {face(1), face(2)}, Options(), kFrameWidth, hold, kNow);
  EXPECT_TRUE(status.events.empty());
}

}  // namespace
}  // namespace halcyra
