// One turn of the loop, without a window, on frames and services of the test's own.
#include "app/loop_turn.hpp"

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "capture/frame_conversion.hpp"
#include "dashboard/draw_dashboard.hpp"
#include "dashboard/font_scale.hpp"
#include "tests/app/allocated_pictures.hpp"
#include "tests/support/environment_variable.hpp"
#include "tests/support/event_messages.hpp"
#include "tests/support/fake_commands.hpp"
#include "tests/support/fed_sensor.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/working_folder.hpp"

namespace halcyra {
namespace {

using Texts = std::vector<std::string>;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// A clock that stands still until a test moves it.
Clock::time_point g_time;
std::function<void()> g_when_asked;

Clock::time_point test_time() {
  if (g_when_asked) g_when_asked();
  return g_time;
}

const Texts kRefresh = {"sonmerectl status", "sonmerectl persistence-status",
                        "systemctl --user is-active corvane.service",
                        "systemctl is-active corvane.service"};

Texts times(int count, const Texts& texts) {
  Texts result;
  for (int i = 0; i < count; ++i) result.insert(result.end(), texts.begin(), texts.end());
  return result;
}

// A broad picture with one face, a little left of its middle: 3 degrees to the left by the width
// of the picture, but 48 degrees to the right by its height.
cv::Mat portrait() {
  static const cv::Mat photograph = cv::imread(HALCYRA_TEST_DATA "/astronaut.png");
  return photograph(cv::Rect(0, 0, 480, 240)).clone();
}

cv::Mat empty_room() { return cv::Mat(48, 64, CV_8UC3, cv::Scalar(10, 120, 200)); }

// Two values side by side, so that there is contrast.
cv::Mat halves(float left, float right) {
  cv::Mat pixels(4, 8, CV_32FC1, cv::Scalar(left));
  pixels(cv::Rect(4, 0, 4, 4)) = right;
  return pixels;
}

const cv::Mat kInfrared = halves(100, 900);
const cv::Mat kDepth = halves(700, 3000);

cv::Mat with_fourth_channel(const cv::Mat& picture) {
  cv::Mat pixels;
  cv::cvtColor(picture, pixels, cv::COLOR_BGR2BGRA);
  return pixels;
}

class LoopTurn : public ::testing::Test {
 protected:
  LoopTurn() {
    commands_.answer_nothing(sonmere());
    commands_.answer_nothing(tools() / "systemctl");
    g_time = Clock::time_point(100s);
    g_when_asked = nullptr;
    center_.now = test_time;
    center_.loop.start = g_time;
    center_.options.width = 800;
    center_.options.height = 480;
    center_.options.font_scale = 1.0;
  }
  ~LoopTurn() override { g_when_asked = nullptr; }

  std::filesystem::path sonmere() const { return folder_.path() / "install/sonmerectl"; }
  std::filesystem::path tools() const { return folder_.path() / "tools"; }
  std::filesystem::path captures() const { return folder_.path() / "captures"; }

  void start_sensor() { start_fed_sensor(center_.kinect); }

  void load_cascades() { load_detectors(center_.detectors, center_.options, center_.status); }

  // One turn on a whole set with this colour picture.
  std::vector<FaceInfo> see(const cv::Mat& color) {
    feed_set(center_.kinect, with_fourth_channel(color), kInfrared, kDepth);
    return observe_room(center_);
  }

  void say_voice_comes_from(const std::string& degrees) {
    write_file(folder_.path() / ".local/state/halcyra/first-run-event.json",
               "{\"direction_angle_degrees\": " + degrees + ", \"direction_confidence\": 0.9}");
  }

  Options frame_options(int width, int height) const {
    Options options = center_.options;
    options.width = width;
    options.height = height;
    return options;
  }

  Texts written_images() const {
    Texts names;
    if (!std::filesystem::exists(captures())) return names;
    for (const auto& entry : std::filesystem::directory_iterator(captures())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  WorkingFolder folder_;
  EnvironmentVariable home_{"HOME", folder_.path().string()};
  EnvironmentVariable path_{"PATH", tools().string()};
  FontScaleSetting font_scale_{1.0};
  FakeCommands commands_;
  ControlCenter center_;
};

// ---- Seeing the room.

TEST_F(LoopTurn, CountsLogsAndReturnsTheFacesOfTheFrame) {
  start_sensor();
  load_cascades();
  const std::vector<FaceInfo> faces = see(portrait());
  ASSERT_EQ(faces.size(), 1U);
  EXPECT_TRUE(faces[0].box.contains(cv::Point(225, 115))) << faces[0].box;
  EXPECT_EQ(center_.status.faces, 1);
  EXPECT_EQ(center_.status.room.people, 1);
  EXPECT_EQ(center_.status.frames, 1);
}

TEST_F(LoopTurn, LogsTheFaceBeforeWhatItMeansForTheRoom) {
  start_sensor();
  load_cascades();
  say_voice_comes_from("-3");
  center_.options.view = "rgb";
  see(portrait());
  EXPECT_EQ(event_messages(center_.status),
            (Texts{"Face detected: 1", "Person appeared: 1", "Unknown person visible",
                   "voice direction matched Person 1"}));
}

TEST_F(LoopTurn, ForgetsTheFacesOfTheLastFrame) {
  start_sensor();
  load_cascades();
  see(portrait());
  EXPECT_TRUE(see(empty_room()).empty());
  EXPECT_EQ(center_.status.faces, 0);
  EXPECT_EQ(center_.status.room.people, 0);
}

TEST_F(LoopTurn, FindsNoFacesWithoutTheFrontalCascade) {
  start_sensor();
  load_cascades();
  center_.status.frontal_cascade_loaded = false;
  center_.status.faces = 7;
  EXPECT_TRUE(see(portrait()).empty());
  EXPECT_EQ(center_.status.faces, 0);
  EXPECT_EQ(center_.status.frames, 1);
}

TEST_F(LoopTurn, TurnsEachStreamIntoItsOwnPreview) {
  start_sensor();
  see(empty_room());
  cv::Mat expected;
  EXPECT_TRUE(same_pixels(center_.previews.color.bgr, empty_room()));
  ASSERT_TRUE(infrared_picture(kInfrared, expected));
  EXPECT_TRUE(same_pixels(center_.previews.infrared, expected));
  ASSERT_TRUE(depth_picture(kDepth, expected));
  EXPECT_TRUE(same_pixels(center_.previews.depth, expected));
}

TEST_F(LoopTurn, ConvertsInfraredBeforeDepth) {
  start_sensor();
  const cv::Mat depth = kDepth.rowRange(0, kDepth.rows / 2).clone();
  feed_set(center_.kinect, with_fourth_channel(empty_room()), kInfrared, depth);
  const AllocatedPictures pictures;
  observe_room(center_);
  std::vector<cv::Size> made;
  for (const cv::Size size : pictures.sizes()) {
    if (size == kInfrared.size() || size == depth.size()) made.push_back(size);
  }
  EXPECT_EQ(made, (std::vector<cv::Size>{kInfrared.size(), depth.size()}));
}

TEST_F(LoopTurn, KeepsThePreviewsOfTheLastSetWithoutANewOne) {
  start_sensor();
  see(empty_room());
  const Previews before = center_.previews;
  center_.kinect.streams_started = false;
  EXPECT_TRUE(observe_room(center_).empty());
  EXPECT_TRUE(same_pixels(center_.previews.color.bgr, before.color.bgr));
  EXPECT_TRUE(same_pixels(center_.previews.infrared, before.infrared));
  EXPECT_TRUE(same_pixels(center_.previews.depth, before.depth));
  EXPECT_EQ(center_.status.frames, 1);
}

// The colour frame's pixels cannot be read.
TEST_F(LoopTurn, CountsNoFrameWithoutAUsableColorFrame) {
  start_sensor();
  see(empty_room());
  feed_set(center_.kinect, cv::Mat(48, 64, CV_8UC3, cv::Scalar(1, 2, 3)), kInfrared, kDepth);
  EXPECT_TRUE(observe_room(center_).empty());
  EXPECT_EQ(center_.status.frames, 1);
  EXPECT_TRUE(same_pixels(center_.previews.color.bgr, empty_room()));
  EXPECT_TRUE(center_.kinect.frames.empty());
}

// The frame rate is the first thing after the frame set that reads the clock.
TEST_F(LoopTurn, GivesTheSetBackBeforeTheTurnGoesOn) {
  start_sensor();
  std::vector<bool> held;
  g_when_asked = [&] { held.push_back(!center_.kinect.frames.empty()); };
  see(empty_room());
  ASSERT_FALSE(held.empty());
  EXPECT_FALSE(held.front());
}

TEST_F(LoopTurn, CountsFramesPerSecondFromTheStartOfTheLoop) {
  start_sensor();
  see(empty_room());
  EXPECT_EQ(center_.status.fps, 0.0);
  g_time += 4s;
  see(empty_room());
  EXPECT_EQ(center_.status.fps, 0.5);
  g_time += 500ms;
  see(empty_room());
  EXPECT_EQ(center_.status.fps, 3 / 4.5);
}

TEST_F(LoopTurn, KeepsTheFrameRateUpToDateWithoutFrames) {
  center_.loop.frame_count = 10;
  g_time += 4s;
  observe_room(center_);
  EXPECT_EQ(center_.status.fps, 2.5);
}

TEST_F(LoopTurn, MatchesTheVoiceByTheWidthOfTheFrame) {
  start_sensor();
  load_cascades();
  say_voice_comes_from("-3");
  see(portrait());
  EXPECT_EQ(center_.status.room.voice_match, "voice direction matched Person 1");
}

TEST_F(LoopTurn, KnowsTheVoiceThatWasAskedForInTheSameTurn) {
  start_sensor();
  say_voice_comes_from("-3");
  see(empty_room());
  EXPECT_EQ(center_.status.room.voice_match.rfind("unmatched voice ", 0), 0U)
      << center_.status.room.voice_match;
}

TEST_F(LoopTurn, AsksTheServicesOnTheFirstAndEvery30thFrame) {
  start_sensor();
  see(empty_room());
  EXPECT_EQ(commands_.calls(), kRefresh);
  see(empty_room());
  EXPECT_EQ(commands_.calls(), kRefresh);
  center_.loop.frame_count = 28;
  see(empty_room());
  EXPECT_EQ(commands_.calls(), kRefresh);
  see(empty_room());
  EXPECT_EQ(commands_.calls(), times(2, kRefresh));
  see(empty_room());
  center_.loop.frame_count = 59;
  see(empty_room());
  EXPECT_EQ(commands_.calls(), times(3, kRefresh));
}

TEST_F(LoopTurn, AsksTheServicesInEveryTurnWhileTheCountRestsOnSuchAFrame) {
  for (const int resting : {1, 30}) {
    center_.loop.frame_count = resting;
    observe_room(center_);
    observe_room(center_);
  }
  EXPECT_EQ(commands_.calls(), times(4, kRefresh));
}

TEST_F(LoopTurn, DoesNotAskTheServicesBeforeTheFirstFrame) {
  observe_room(center_);
  EXPECT_EQ(commands_.calls(), Texts{});
}

// The microphone that the voice service names decides what is said of the assistant.
TEST_F(LoopTurn, AsksTheVoiceServiceBeforeTheAssistant) {
  commands_.answer(sonmere(), "status", "default_source: sonmere_beamformed_mic\n");
  commands_.answer(tools() / "systemctl", "is-active corvane.service", "active\n");
  center_.loop.frame_count = 1;
  observe_room(center_);
  EXPECT_EQ(center_.status.corvane.mic_routing, "likely yes");
}

TEST_F(LoopTurn, HoldsModesBackByItsOwnClock) {
  observe_room(center_);
  center_.options.view = "follow";
  observe_room(center_);
  EXPECT_EQ(center_.status.room.view_mode, "scan");
  g_time += 2s;
  observe_room(center_);
  EXPECT_EQ(center_.status.room.view_mode, "follow");
}

TEST_F(LoopTurn, LogsWhatStaysTheSameInTheRoomOnce) {
  observe_room(center_);
  observe_room(center_);
  EXPECT_EQ(event_messages(center_.status), (Texts{"No person visible", "Wide room scan active"}));
}

// ---- Drawing.

TEST_F(LoopTurn, DrawsWhatItHasSeenAtTheSizeOfTheFrame) {
  start_sensor();
  load_cascades();
  const std::vector<FaceInfo> faces = see(portrait());
  const Options options = frame_options(1000, 600);
  cv::Mat expected;
  g_font_scale = 1.0;
  draw_dashboard(expected, center_.previews.color.bgr, center_.previews.infrared,
                 center_.previews.depth, center_.status, options, faces);
  g_font_scale = 0.5;
  render_dashboard(center_, faces, options);
  EXPECT_TRUE(same_pixels(center_.canvas, expected));
}

TEST_F(LoopTurn, NamesTheLayoutImageAfterTheSizeOfTheFrame) {
  center_.options.layout_test = true;
  render_dashboard(center_, {}, frame_options(1000, 600));
  const std::string name = "control-center-layout-test-1000x600.png";
  EXPECT_EQ(written_images(), Texts{name});
  EXPECT_TRUE(same_pixels(cv::imread((captures() / name).string()), center_.canvas));
  EXPECT_EQ(event_messages(center_.status), Texts{"Layout test image written: captures/" + name});
}

TEST_F(LoopTurn, WritesOneLayoutImageOnly) {
  center_.options.layout_test = true;
  render_dashboard(center_, {}, frame_options(1000, 600));
  render_dashboard(center_, {}, frame_options(900, 500));
  EXPECT_EQ(written_images(), Texts{"control-center-layout-test-1000x600.png"});
  EXPECT_EQ(event_messages(center_.status).size(), 1U);
}

TEST_F(LoopTurn, WritesNoLayoutImageUnasked) {
  render_dashboard(center_, {}, center_.options);
  EXPECT_EQ(written_images(), Texts{});
  EXPECT_EQ(event_messages(center_.status), Texts{});
}

// ---- The end of a turn.

TEST_F(LoopTurn, GoesOnWithoutAFrameLimitAndCountsNothing) {
  for (int turn = 0; turn < 3; ++turn) EXPECT_TRUE(finish_turn(center_, -1));
  EXPECT_EQ(center_.status.frames, 0);
}

TEST_F(LoopTurn, CountsItselfWithoutASensorUpToTheLimit) {
  center_.options.frames = 3;
  EXPECT_TRUE(finish_turn(center_, -1));
  EXPECT_TRUE(finish_turn(center_, -1));
  EXPECT_EQ(center_.status.frames, 2);
  EXPECT_FALSE(finish_turn(center_, -1));
  EXPECT_EQ(center_.status.frames, 3);
}

TEST_F(LoopTurn, IsCountedWhenAQuitKeyEndsIt) {
  center_.options.frames = 10;
  EXPECT_FALSE(finish_turn(center_, 'q'));
  EXPECT_EQ(center_.status.frames, 1);
  EXPECT_EQ(center_.loop.frame_count, 1);
}

TEST_F(LoopTurn, EndsAtTheQuitKeyWithoutALimit) {
  EXPECT_FALSE(finish_turn(center_, 'q'));
  EXPECT_EQ(center_.status.frames, 0);
}

TEST_F(LoopTurn, LeavesTheCountToARunningSensor) {
  start_sensor();
  center_.options.frames = 2;
  see(empty_room());
  EXPECT_TRUE(finish_turn(center_, -1));
  EXPECT_TRUE(finish_turn(center_, -1));
  EXPECT_EQ(center_.status.frames, 1);
  see(empty_room());
  EXPECT_FALSE(finish_turn(center_, -1));
  EXPECT_EQ(center_.status.frames, 2);
}

TEST_F(LoopTurn, CarriesOutTheKeyOfItsLastTurn) {
  center_.options.frames = 1;
  EXPECT_FALSE(finish_turn(center_, 'b'));
  EXPECT_TRUE(center_.options.debug);
  EXPECT_EQ(event_messages(center_.status), Texts{"Debug boxes/detail enabled"});
}

}  // namespace
}  // namespace halcyra
