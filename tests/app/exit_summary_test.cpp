#include "app/exit_summary.hpp"

#include <limits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

struct FinishedRun {
  RuntimeStatus status;
  Options options;
  DisplayInfo display;
  RecognitionState recognition;
};

std::string summary(const FinishedRun& run) {
  std::ostringstream out;
  write_exit_summary(out, run.status, run.options, run.display, run.recognition);
  return out.str();
}

// The text between `key` and the next blank or the end of the line.
std::string value_of(const std::string& key, const FinishedRun& run) {
  const std::string line = summary(run);
  const std::size_t found = line.find(key);
  if (found == std::string::npos) return "(no " + key + ")";
  const std::size_t start = found + key.size();
  return line.substr(start, line.find_first_of(" \n", start) - start);
}

TEST(ExitSummary, StatesARunInWhichNothingHappened) {
  EXPECT_EQ(summary(FinishedRun()),
            "Halcyra Control Center exit: frames=0 fps=0 kinect=unavailable rgb=unavailable"
            " ir=unavailable depth=unavailable size=0x0 screen=1280x720(fallback)"
            " screen_percent=0.75 font_scale=0 window=normal current_view=combo samples_loaded=0"
            " model_path=trained_in_memory_from_faces/dorran candidate_threshold=60"
            " confirmed_threshold=55 cc_unknown_predictions=0 cc_candidate_dorran_predictions=0"
            " cc_confirmed_dorran_predictions=0 cc_last_label=Unknown cc_last_detector_type=none"
            " cc_last_face_box=none cc_last_confidence=0 cc_last_quality=no_face"
            " cc_last_stage=unknown\n");
}

RecognitionState some_recognition() {
  RecognitionState recognition;
  recognition.samples.resize(3);
  recognition.cc_unknown_predictions = 11;
  recognition.cc_candidate_dorran_predictions = 22;
  recognition.cc_confirmed_dorran_predictions = 33;
  recognition.cc_last_label = "ConfirmedDorran";
  recognition.cc_last_detector_type = "profile_left";
  recognition.cc_last_face_box = "10,20,30x40";
  recognition.cc_last_confidence = 48.25;
  recognition.cc_last_quality = "good";
  recognition.cc_last_stage = "evening light";
  return recognition;
}

FinishedRun some_run() {
  FinishedRun run;
  run.status.frames = 123;
  run.status.fps = 29.5;
  run.status.kinect_connected = true;
  run.status.rgb_ok = true;
  run.status.ir_ok = true;
  run.status.depth_ok = true;
  run.options.width = 1440;
  run.options.height = 810;
  run.options.screen_percent = 0.6;
  run.options.font_scale = 1.1;
  run.options.fullscreen = true;
  run.options.view = "room_overview";
  run.options.samples_dir = "some/other folder";
  run.options.candidate_threshold = 61.5;
  run.options.confirmed_threshold = 54.25;
  run.display = {1920, 1080, "xrandr"};
  run.recognition = some_recognition();
  return run;
}

TEST(ExitSummary, StatesEveryPieceInItsOrder) {
  EXPECT_EQ(summary(some_run()),
            "Halcyra Control Center exit: frames=123 fps=29.5 kinect=connected rgb=OK ir=OK"
            " depth=OK size=1440x810 screen=1920x1080(xrandr) screen_percent=0.6 font_scale=1.1"
            " window=fullscreen current_view=room_overview samples_loaded=3"
            " model_path=trained_in_memory_from_some/other folder candidate_threshold=61.5"
            " confirmed_threshold=54.25 cc_unknown_predictions=11"
            " cc_candidate_dorran_predictions=22 cc_confirmed_dorran_predictions=33"
            " cc_last_label=ConfirmedDorran cc_last_detector_type=profile_left"
            " cc_last_face_box=10,20,30x40 cc_last_confidence=48.25 cc_last_quality=good"
            " cc_last_stage=evening light\n");
}

TEST(ExitSummary, JudgesEachStreamOnItsOwn) {
  FinishedRun run;
  run.status.rgb_ok = true;
  EXPECT_EQ(value_of(" rgb=", run), "OK");
  EXPECT_EQ(value_of(" ir=", run), "unavailable");
  EXPECT_EQ(value_of(" depth=", run), "unavailable");
  EXPECT_EQ(value_of(" kinect=", run), "unavailable");
  run = FinishedRun();
  run.status.ir_ok = true;
  EXPECT_EQ(value_of(" rgb=", run) + value_of(" depth=", run), "unavailableunavailable");
  EXPECT_EQ(value_of(" ir=", run), "OK");
  run = FinishedRun();
  run.status.depth_ok = true;
  EXPECT_EQ(value_of(" rgb=", run) + value_of(" ir=", run), "unavailableunavailable");
  EXPECT_EQ(value_of(" depth=", run), "OK");
  run = FinishedRun();
  run.status.kinect_connected = true;
  EXPECT_EQ(value_of(" kinect=", run), "connected");
  EXPECT_EQ(value_of(" rgb=", run), "unavailable");
}

struct WrittenNumber {
  double value;
  const char* text;
};

constexpr WrittenNumber kNumbers[] = {
    {60.0, "60"},
    {0.75, "0.75"},
    {1e-05, "1e-05"},
    {0.0001, "0.0001"},
    {12.3456789, "12.3457"},
    {999999.0, "999999"},
    {1000000.0, "1e+06"},
    {1234567.0, "1.23457e+06"},
    {29.9999999, "30"},
    {-0.5, "-0.5"},
    {0.1 + 0.2, "0.3"},
    {100000.5, "100000"},
    {std::numeric_limits<double>::infinity(), "inf"},
};

TEST(ExitSummary, WritesRealNumbersShortWithSixDigits) {
  for (const WrittenNumber& number : kNumbers) {
    FinishedRun run;
    run.status.fps = number.value;
    run.options.screen_percent = number.value;
    run.options.font_scale = number.value;
    run.options.candidate_threshold = number.value;
    run.options.confirmed_threshold = number.value;
    run.recognition.cc_last_confidence = number.value;
    for (const char* key : {" fps=", " screen_percent=", " font_scale=", " candidate_threshold=",
                            " confirmed_threshold=", " cc_last_confidence="}) {
      EXPECT_EQ(value_of(key, run), number.text) << key;
    }
  }
}

TEST(ExitSummary, WritesIntegersPlain) {
  FinishedRun run;
  run.status.frames = 1234567;
  run.display = {1000000, 2000000, "xdpyinfo"};
  run.recognition.cc_unknown_predictions = 7654321;
  run.recognition.samples.resize(1001);
  EXPECT_EQ(value_of("frames=", run), "1234567");
  EXPECT_EQ(value_of(" screen=", run), "1000000x2000000(xdpyinfo)");
  EXPECT_EQ(value_of(" cc_unknown_predictions=", run), "7654321");
  EXPECT_EQ(value_of(" samples_loaded=", run), "1001");
}

class CountingBuffer : public std::stringbuf {
 public:
  int flushes() const { return flushes_; }

 protected:
  int sync() override {
    ++flushes_;
    return std::stringbuf::sync();
  }

 private:
  int flushes_ = 0;
};

TEST(ExitSummary, LeavesFlushingToTheStream) {
  CountingBuffer buffer;
  std::ostream out(&buffer);
  write_exit_summary(out, RuntimeStatus(), Options(), DisplayInfo(), RecognitionState());
  EXPECT_EQ(buffer.flushes(), 0);
  EXPECT_EQ(buffer.str(), summary(FinishedRun()));
}

}  // namespace
}  // namespace halcyra
