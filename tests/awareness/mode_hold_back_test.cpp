#include "awareness/mode_hold_back.hpp"

#include <chrono>
#include <string>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using Moment = std::chrono::steady_clock::time_point;

// A clock far from zero, as the steady clock of a machine that has been up for days.
constexpr Moment kStart{std::chrono::hours(100)};
constexpr nanoseconds kDwell = milliseconds(1250);
constexpr nanoseconds kGap = milliseconds(1000);
constexpr nanoseconds kInstant{1};

ModeHoldBack scanning() { return {"scan", "scan", kStart, kStart}; }

// The mode shown after `mode` is wanted.
std::string shown(ModeHoldBack& hold, const std::string& view, const std::string& mode,
                  nanoseconds after_start) {
  const bool admitted = admit_mode(hold, view, mode, kStart + after_start);
  EXPECT_EQ(admitted, hold.held_mode == mode);
  return hold.held_mode;
}

TEST(ModeHoldBack, StartsWithTheWideScan) {
  EXPECT_EQ(ModeHoldBack().held_mode, "scan");
  EXPECT_EQ(ModeHoldBack().candidate_mode, "scan");
}

TEST(AdmitMode, LetsTheShownModeStand) {
  ModeHoldBack hold = scanning();
  for (const auto wait : {nanoseconds(0), kInstant, kDwell, 100 * kDwell}) {
    EXPECT_EQ(shown(hold, "combo", "scan", wait), "scan");
    EXPECT_EQ(hold.candidate_mode, "scan");
    EXPECT_EQ(hold.candidate_since, kStart + wait);
    EXPECT_EQ(hold.last_switch, kStart);
  }
}

TEST(AdmitMode, HoldsANewModeBackForTheDwell) {
  for (const std::string view : {"combo", "follow"}) {
    ModeHoldBack hold = scanning();
    const nanoseconds wanted = milliseconds(7000);
    EXPECT_EQ(shown(hold, view, "follow", wanted), "scan");
    EXPECT_EQ(hold.candidate_mode, "follow");
    EXPECT_EQ(hold.candidate_since, kStart + wanted);
    EXPECT_EQ(shown(hold, view, "follow", wanted + milliseconds(700)), "scan");
    EXPECT_EQ(shown(hold, view, "follow", wanted + kDwell - kInstant), "scan");
    EXPECT_EQ(hold.candidate_since, kStart + wanted);
    EXPECT_EQ(shown(hold, view, "follow", wanted + kDwell), "follow");
  }
}

TEST(AdmitMode, RemembersWhenItSwitched) {
  ModeHoldBack hold = scanning();
  shown(hold, "combo", "follow", milliseconds(100));
  EXPECT_EQ(hold.last_switch, kStart);
  shown(hold, "combo", "follow", milliseconds(2000));
  EXPECT_EQ(hold.held_mode, "follow");
  EXPECT_EQ(hold.candidate_mode, "follow");
  EXPECT_EQ(hold.candidate_since, kStart + milliseconds(100));
  EXPECT_EQ(hold.last_switch, kStart + milliseconds(2000));
}

TEST(AdmitMode, DropsACandidateWhenTheShownModeIsBack) {
  ModeHoldBack hold = scanning();
  shown(hold, "combo", "follow", nanoseconds(0));
  shown(hold, "combo", "follow", milliseconds(1200));
  EXPECT_EQ(shown(hold, "combo", "scan", milliseconds(1210)), "scan");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(1300)), "scan");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(1300) + kDwell - kInstant), "scan");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(1300) + kDwell), "follow");
}

TEST(AdmitMode, RestartsTheDwellForAThirdMode) {
  ModeHoldBack hold = scanning();
  shown(hold, "combo", "follow", nanoseconds(0));
  EXPECT_EQ(shown(hold, "combo", "room_overview", milliseconds(1000)), "scan");
  EXPECT_EQ(shown(hold, "combo", "room_overview", milliseconds(1000) + kDwell - kInstant), "scan");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(2500)), "scan");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(2500) + kDwell - kInstant), "scan");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(2500) + kDwell), "follow");
}

TEST(AdmitMode, NeedsTheDwellForEverySwitch) {
  ModeHoldBack hold = scanning();
  shown(hold, "combo", "follow", nanoseconds(0));
  EXPECT_EQ(shown(hold, "combo", "follow", kDwell), "follow");
  EXPECT_EQ(shown(hold, "combo", "scan", kDwell + kInstant), "follow");
  EXPECT_EQ(shown(hold, "combo", "scan", 2 * kDwell), "follow");
  EXPECT_EQ(shown(hold, "combo", "scan", 2 * kDwell + kInstant), "scan");
}

// A last switch later than the start of the candidate, which no sequence of calls produces.
TEST(AdmitMode, WaitsForTheGapAfterTheLastSwitch) {
  const auto switched = milliseconds(900);
  const ModeHoldBack before{"scan", "follow", kStart, kStart + switched};
  ModeHoldBack hold = before;
  EXPECT_EQ(shown(hold, "combo", "follow", kDwell), "scan");
  EXPECT_EQ(shown(hold, "combo", "follow", switched + kGap - kInstant), "scan");
  EXPECT_EQ(hold.candidate_since, kStart);
  EXPECT_EQ(shown(hold, "combo", "follow", switched + kGap), "follow");
}

TEST(AdmitMode, ShowsEveryModeAtOnceUnderOtherViews) {
  for (const std::string view :
       {"rgb", "ir", "depth", "skeletal", "room_overview", "", "Combo", "FOLLOW", "combo "}) {
    ModeHoldBack hold = scanning();
    for (const std::string mode : {"depth", "room_overview", "follow", "scan"}) {
      EXPECT_EQ(shown(hold, view, mode, kInstant), mode) << view;
      EXPECT_EQ(hold.candidate_mode, mode);
      EXPECT_EQ(hold.candidate_since, kStart + kInstant);
      EXPECT_EQ(hold.last_switch, kStart + kInstant);
    }
  }
}

TEST(AdmitMode, GoesOnFromTheModeThatAnotherViewShowed) {
  ModeHoldBack hold = scanning();
  const nanoseconds last_operator_turn = milliseconds(5000);
  shown(hold, "depth", "depth", last_operator_turn);
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(5030)), "depth");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(5030) + kDwell - kInstant), "depth");
  EXPECT_EQ(shown(hold, "combo", "follow", milliseconds(5030) + kDwell), "follow");
}

TEST(AdmitMode, LeavesTheCandidateWhenTheViewChangesBetweenTheTwoAutomaticOnes) {
  ModeHoldBack hold = scanning();
  shown(hold, "combo", "follow", nanoseconds(0));
  EXPECT_EQ(shown(hold, "follow", "follow", kDwell), "follow");
}

}  // namespace
}  // namespace halcyra
