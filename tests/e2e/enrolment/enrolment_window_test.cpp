// The enrolment window on a desktop, and what it shows of the sensor.
#include <chrono>

#include <gtest/gtest.h>

#include "tests/e2e/enrolment/enrolment_run.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/e2e/window_manager.hpp"

namespace halcyra {
namespace {

using EnrolmentWindow = EnrolmentRun;

TEST_F(EnrolmentWindow, TakesThreeQuartersOfTheScreen) {
  record(enrolment_picture("far-0"));
  start({});
  EXPECT_TRUE(shows("Come closer"));
  EXPECT_EQ(desktop_.window_size(), cv::Size(1440, 900));
}

TEST_F(EnrolmentWindow, FillsTheScreenIfAsked) {
  const WindowManager manager(server_, stage_);
  record(enrolment_picture("far-0"));
  start({"--fullscreen"});
  EXPECT_TRUE(wait_until([&] { return desktop_.window_size() == cv::Size(1920, 1200); }));
  EXPECT_TRUE(shows("Come closer"));
}

TEST_F(EnrolmentWindow, IsDrawnAtItsNewSize) {
  record(enrolment_picture("far-0"));
  start({});
  EXPECT_TRUE(shows("Come closer"));
  for (const cv::Size size : {cv::Size(1900, 1000), cv::Size(810, 500)}) {
    desktop_.resize(size);
    EXPECT_TRUE(wait_until([&] { return desktop_.window_size() == size; }));
    EXPECT_TRUE(shows("Come closer")) << size.width;
  }
}

TEST_F(EnrolmentWindow, MayBeMinimised) {
  const WindowManager manager(server_, stage_);
  record_all_poses();
  start({"--per-pose", "1"});
  desktop_.minimise();
  EXPECT_TRUE(wait_until([&] { return !desktop_.window_shown(); }));
  EXPECT_TRUE(wait_until([&] { return samples().size() == 3; }));
  desktop_.bring_back();
  EXPECT_TRUE(wait_until([&] { return desktop_.window_shown(); }));
  EXPECT_TRUE(shows("Done"));
}

TEST_F(EnrolmentWindow, GivesThePersonTimeToGetReady) {
  record(enrolment_picture("front-0"));
  const auto before = std::chrono::steady_clock::now();
  start({});
  EXPECT_TRUE(says("taken front/"));
  EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::seconds(3));
}

TEST_F(EnrolmentWindow, WaitsForASensorThatNeverDelivers) {
  recording_.set_device("pace: 0\n");
  recording_.add_color(enrolment_picture("far-0"));
  start({});
  EXPECT_TRUE(shows("Waiting for the sensor"));
  ASSERT_TRUE(quit());
}

TEST_F(EnrolmentWindow, GoesOnWhenTheSensorIsBack) {
  recording_.set_device("pace: 30\nafter: pause\n");
  record(enrolment_picture("far-0"));
  start({});
  for (int times = 0; times < 2; ++times) {
    EXPECT_TRUE(shows("Waiting for the sensor"));
    EXPECT_TRUE(shows("Come closer"));
  }
}

}  // namespace
}  // namespace halcyra
