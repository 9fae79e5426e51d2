// What the program asks of the window system, call by call. No window is opened: the functions of
// recorded_window/ take the calls.
#include <algorithm>

#include <gtest/gtest.h>
#include <opencv2/core/version.hpp>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

using Calls = std::vector<std::string>;
using Summary = std::map<std::string, std::string>;

const std::string kTitle = "Halcyra Control Center";

// With OpenCV from 4.7 on, the canvas of a window that may be changing is handed over enlarged, or
// it would not fill the window.
constexpr int kEnlargement = CV_VERSION_MAJOR == 4 && CV_VERSION_MINOR <= 6 ? 1 : 2;

std::string imshow_call(int width, int height) {
  return "imshow " + kTitle + " " + std::to_string(kEnlargement * width) + "x" +
         std::to_string(kEnlargement * height);
}

class RecordedWindow : public SensorRun {
 protected:
  void script(const std::string& name, const std::string& content) {
    write_text(folder() / name, content);
  }

  // Runs to the end and returns the values of the summary.
  Summary run(const std::vector<std::string>& arguments) {
    std::filesystem::create_directories(folder());
    ProgramStart start{arguments, "", {{"VIRTUAL_KINECT", recording_.folder().string()}}};
    start.environment["LD_PRELOAD"] = HALCYRA_RECORDED_WINDOW;
    start.environment["RECORDED_WINDOW"] = folder().string();
    Program program(stage_, start);
    const std::optional<ProcessEnd> end = program.wait_for_end();
    EXPECT_TRUE(end && end->exit_status == 0) << program.errors();
    output_ = program.output();
    return summary_values(output_);
  }

  Calls calls() const {
    std::istringstream text(read_text(folder() / "calls"));
    Calls calls;
    for (std::string call; std::getline(text, call);) calls.push_back(call);
    return calls;
  }

  Calls calls_of(const std::string& function) const {
    Calls matching;
    for (const std::string& call : calls()) {
      if (call.rfind(function + " ", 0) == 0) matching.push_back(call);
    }
    return matching;
  }

  std::filesystem::path folder() const { return stage_.folder() / "window"; }

  std::string output_;
};

TEST_F(RecordedWindow, IsOpenedMeasuredShownAskedForAKeyAndClosed) {
  script("sizes", "1000 600\n");
  run({"--no-camera", "--frames", "2", "--width", "1440", "--height", "810"});
  const std::string free_shape_without_toolbar = "272";
  const std::string fullscreen_off = "0 0";
  const Calls expected = {"namedWindow " + kTitle + " " + free_shape_without_toolbar,
                          "resizeWindow " + kTitle + " 1440x810",
                          "setWindowProperty " + kTitle + " " + fullscreen_off,
                          "getWindowImageRect " + kTitle,
                          imshow_call(1000, 600),
                          "waitKey 30",
                          "getWindowImageRect " + kTitle,
                          imshow_call(1000, 600),
                          "waitKey 30",
                          "destroyAllWindows"};
  EXPECT_EQ(calls(), expected);
}

TEST_F(RecordedWindow, IsDrawnAtItsLiveSizeFrom800By480) {
  script("sizes", "800 480  799 900  900 479  2000 500  0 0  -1 -1\n");
  const Summary summary =
      run({"--no-camera", "--frames", "6", "--width", "1440", "--height", "810"});
  EXPECT_EQ(calls_of("imshow"),
            (Calls{imshow_call(800, 480), imshow_call(1440, 810), imshow_call(1440, 810),
                   imshow_call(2000, 500), imshow_call(1440, 810), imshow_call(1440, 810)}));
  EXPECT_EQ(summary.at("size"), "1440x810");
}

// Enlarging costs time, so it ends when the window seems to stay as it is. It goes on every now and
// then, or growth by a pixel would not be seen.
TEST_F(RecordedWindow, GetsFewEnlargedCanvasesWhileItStaysAsItIs) {
  script("sizes", "1000 600\n");
  run({"--no-camera", "--smoke", "--frames", "100", "--width", "1440", "--height", "810"});
  const Calls shown = calls_of("imshow");
  ASSERT_EQ(shown.size(), 100U);
  const std::string unchanged = "imshow " + kTitle + " 1000x600";
  if (kEnlargement == 1) {
    EXPECT_EQ(shown, Calls(100, unchanged));
    return;
  }
  EXPECT_EQ(Calls(shown.begin(), shown.begin() + 10), Calls(10, imshow_call(1000, 600)));
  EXPECT_GT(std::count(shown.begin(), shown.end(), unchanged), 70);
  for (auto from = shown.begin(); from + 10 <= shown.end(); ++from) {
    EXPECT_NE(std::find(from, from + 10, imshow_call(1000, 600)), from + 10);
  }
}

TEST_F(RecordedWindow, GetsEnlargedCanvasesAgainOnceItChanges) {
  std::string sizes;
  for (int turn = 0; turn < 30; ++turn) sizes += "1000 600 ";
  script("sizes", sizes + "1001 600\n");
  run({"--no-camera", "--smoke", "--frames", "40", "--width", "1440", "--height", "810"});
  const Calls shown = calls_of("imshow");
  EXPECT_EQ(Calls(shown.begin() + 30, shown.end()), Calls(10, imshow_call(1001, 600)));
}

TEST_F(RecordedWindow, InFullScreenIsDrawnAtTheStartUpSize) {
  script("sizes", "1000 600\n");
  run({"--no-camera", "--frames", "2", "--fullscreen", "--width", "1440", "--height", "810"});
  const std::string fullscreen_on = "0 1";
  EXPECT_EQ(calls_of("setWindowProperty"),
            Calls{"setWindowProperty " + kTitle + " " + fullscreen_on});
  EXPECT_EQ(calls_of("imshow"), (Calls{imshow_call(1440, 810), imshow_call(1440, 810)}));
}

TEST_F(RecordedWindow, InFullScreenGetsNoLargerCanvasForAScreenThatCannotBe) {
  stage_.answer("xrandr --current", "screen connected primary 60000x1080+0+0\n");
  run({"--no-camera", "--frames", "1", "--fullscreen"});
  EXPECT_EQ(calls_of("imshow"), Calls{imshow_call(7680, 1080)});
}

TEST_F(RecordedWindow, GivesTheLayoutImageTheNameOfTheFirstLiveSize) {
  script("sizes", "1000 600  1100 700\n");
  run({"--layout-test", "--frames", "2", "--width", "1440", "--height", "810"});
  std::vector<std::string> names;
  for (const auto& entry :
       std::filesystem::directory_iterator(stage_.working_folder() / "captures")) {
    names.push_back(entry.path().filename().string());
  }
  EXPECT_EQ(names, std::vector<std::string>{"control-center-layout-test-1000x600.png"});
}

TEST_F(RecordedWindow, OfASmokeRunWaitsOneMillisecondForAKey) {
  run({"--no-camera", "--smoke", "--frames", "2"});
  EXPECT_EQ(calls_of("waitKey"), (Calls{"waitKey 1", "waitKey 1"}));
}

// 'b' is no quit key; 'q' ends the run in its third turn, which is counted like the others.
TEST_F(RecordedWindow, CountsTheTurnOfTheQuitKeyWhereTurnsAreCounted) {
  script("keys", "-1 98 113\n");
  EXPECT_EQ(run({"--no-camera", "--frames", "10"}).at("frames"), "3");
  EXPECT_EQ(calls_of("waitKey").size(), 3U);
}

TEST_F(RecordedWindow, CountsNoTurnWithoutAFrameLimit) {
  script("keys", "-1 -1 27\n");
  EXPECT_EQ(run({"--no-camera"}).at("frames"), "0");
  EXPECT_EQ(calls_of("waitKey").size(), 3U);
}

TEST_F(RecordedWindow, ClosesAfterTheSensorAndBeforeTheSummary) {
  add_good_sets(3);
  script("await_thread_end", "");
  run({"--frames", "5"});
  EXPECT_EQ(calls().back(), "destroyAllWindows after a thread ended");
  const std::string first_line = "all windows destroyed\n";
  EXPECT_EQ(output_.substr(0, first_line.size()), first_line);
  EXPECT_EQ(output_, first_line + summary_line(output_));
}

// A thousand seconds of opening would leave less than a thousandth of a frame per second.
TEST_F(RecordedWindow, DoesNotCountItsOpeningAgainstTheFrameRate) {
  add_good_sets(3);
  script("opening_seconds", "1000");
  const Summary summary = run({"--frames", "1"});
  EXPECT_EQ(summary.at("frames"), "1");
  EXPECT_GT(std::stod(summary.at("fps")), 0.001);
}

}  // namespace
}  // namespace halcyra
