// Screen sizes as a fake xrandr and a fake xdpyinfo report them.
#include "probes/display_detection.hpp"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/probes/expressions.hpp"
#include "tests/probes/random_text.hpp"
#include "tests/probes/standard_search.hpp"
#include "tests/support/environment_variable.hpp"
#include "tests/support/fake_commands.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {
namespace {

using Texts = std::vector<std::string>;

const std::string kWholeScreen =
    "Screen 0: minimum 8 x 8, current 3840 x 1080, maximum 32767 x 32767\n";
const std::string kDimensions =
    "name of display:    :0\n  dimensions:    1920x1200 pixels (508x317 millimeters)\n";

class DetectDisplay : public testing::Test {
 protected:
  void xrandr_prints(const std::string& output, int exit_status = 0) {
    commands_.answer(tools_.path() / "xrandr", "--current", output, exit_status);
  }
  void xdpyinfo_prints(const std::string& output, int exit_status = 0) {
    commands_.answer(tools_.path() / "xdpyinfo", "", output, exit_status);
  }

  void expect_display(int width, int height, const std::string& source) {
    const DisplayInfo display = detect_display();
    EXPECT_EQ(display.width, width);
    EXPECT_EQ(display.height, height);
    EXPECT_EQ(display.source, source);
  }

  TemporaryFolder tools_;
  EnvironmentVariable path_{"PATH", tools_.path().string()};
  FakeCommands commands_;
};

TEST_F(DetectDisplay, FallsBackWithoutTools) { expect_display(1280, 720, "fallback"); }

TEST_F(DetectDisplay, FallsBackWhenTheToolsSayNothing) {
  commands_.answer_nothing(tools_.path() / "xrandr");
  commands_.answer_nothing(tools_.path() / "xdpyinfo");
  expect_display(1280, 720, "fallback");
  EXPECT_EQ(commands_.calls(), (Texts{"xrandr --current", "xdpyinfo "}));
}

TEST_F(DetectDisplay, FallsBackWhenTheToolsSayNothingUseful) {
  xrandr_prints("Can't open display\n", 1);
  xdpyinfo_prints("xdpyinfo:  unable to open display \"\".\n", 1);
  expect_display(1280, 720, "fallback");
}

TEST_F(DetectDisplay, TakesTheFirstConnectedOutputWithAMode) {
  xrandr_prints(kWholeScreen +
                "HDMI-1 connected 1920x1080+0+0 (normal left) 527mm x 296mm\n"
                "eDP-1 connected primary 2560x1600+1920+0 (normal left)\n");
  expect_display(1920, 1080, "xrandr");
}

TEST_F(DetectDisplay, TakesThePrimaryOutputWhenItComesFirst) {
  xrandr_prints("eDP-1 connected primary 2560x1440+0+0\nHDMI-1 connected 1920x1080+2560+0\n");
  expect_display(2560, 1440, "xrandr");
}

TEST_F(DetectDisplay, SkipsOutputsWithoutAMode) {
  xrandr_prints(
      "DP-1 disconnected 1024x768+0+0\n"
      "DP-2 connected (normal left inverted)\n"
      "DP-3 connected primary (normal left)\n"
      "DP-4 connected 800x600 without a place\n"
      "DP-5 connected 1366x768+0+0\n");
  expect_display(1366, 768, "xrandr");
}

TEST_F(DetectDisplay, TakesTheWholeScreenWhenNoOutputShowsAMode) {
  xrandr_prints(kWholeScreen + "DP-2 connected (normal left)\n");
  expect_display(3840, 1080, "xrandr");
}

TEST_F(DetectDisplay, AcceptsEveryWhiteSpaceInTheScreenLine) {
  for (const std::string blank : {" ", "\t", "\n", "\v", "\f", "\r", " \v\r\n "}) {
    xrandr_prints("current" + blank + "3840" + blank + "x" + blank + "1080");
    expect_display(3840, 1080, "xrandr");
  }
}

TEST_F(DetectDisplay, DoesNotAskXdpyinfoWhenXrandrAnswered) {
  xdpyinfo_prints(kDimensions);
  xrandr_prints(kWholeScreen);
  expect_display(3840, 1080, "xrandr");
  xrandr_prints("DP-5 connected 1366x768+0+0\n");
  expect_display(1366, 768, "xrandr");
  EXPECT_EQ(commands_.calls(), (Texts{"xrandr --current", "xrandr --current"}));
}

TEST_F(DetectDisplay, AsksXdpyinfoWithoutXrandr) {
  xdpyinfo_prints(kDimensions);
  expect_display(1920, 1200, "xdpyinfo");
}

TEST_F(DetectDisplay, AcceptsEveryWhiteSpaceInTheDimensionsLine) {
  for (const std::string blank : {" ", "\t", "\n", "\v", "\f", "\r", " \v\r\n "}) {
    xdpyinfo_prints("dimensions:" + blank + "1920x1200" + blank + "pixels");
    expect_display(1920, 1200, "xdpyinfo");
  }
}

TEST_F(DetectDisplay, NeedsTheWholeDimensionsLine) {
  for (const std::string line :
       {"dimensions:1920x1200 pixels", "dimensions: 1920x1200", "dimensions: 1920 x 1200 pixels",
        "dimensions: 1920x1200pixels", "Dimensions: 1920x1200 pixels"}) {
    xdpyinfo_prints(line);
    expect_display(1280, 720, "fallback");
  }
}

TEST_F(DetectDisplay, DoesNotReadXdpyinfoAnswersFromXrandr) {
  xrandr_prints(kDimensions);
  xdpyinfo_prints(kWholeScreen + "DP-5 connected 1366x768+0+0\n");
  expect_display(1280, 720, "fallback");
}

TEST_F(DetectDisplay, IgnoresTheExitStatus) {
  xrandr_prints("DP-5 connected 1366x768+0+0\n", 1);
  expect_display(1366, 768, "xrandr");
}

TEST_F(DetectDisplay, TakesNumbersAsTheyStand) {
  xrandr_prints("DP-5 connected 0x0+0+0\n");
  expect_display(0, 0, "xrandr");
  xrandr_prints("DP-5 connected 0001366x000000000000000000000000000000000000768+0+0\n");
  expect_display(1366, 768, "xrandr");
  xrandr_prints("DP-5 connected 2147483647x2147483647+0+0\n");
  expect_display(2147483647, 2147483647, "xrandr");
}

TEST_F(DetectDisplay, GoesOnPastANumberTooLarge) {
  for (const std::string mode : {"2147483648x1080", "1920x2147483648", "99999999999999999999x1080",
                                 "1920x99999999999999999999"}) {
    xrandr_prints("DP-5 connected " + mode + "+0+0\n" + kWholeScreen);
    expect_display(3840, 1080, "xrandr");
  }
}

TEST_F(DetectDisplay, GoesOnToXdpyinfoPastNumbersTooLarge) {
  xrandr_prints("DP-5 connected 2147483648x1+0+0\ncurrent 1920 x 99999999999\n");
  xdpyinfo_prints(kDimensions);
  expect_display(1920, 1200, "xdpyinfo");
  xdpyinfo_prints("dimensions:    99999999999x1200 pixels\n");
  expect_display(1280, 720, "fallback");
  xdpyinfo_prints("dimensions:    1920x99999999999 pixels\n");
  expect_display(1280, 720, "fallback");
}

TEST_F(DetectDisplay, FindsTheSizeBetweenMegabytes) {
  const std::string filler(2 << 20, 'x');
  xrandr_prints(filler + " connected 1366x768+0+0" + filler);
  expect_display(1366, 768, "xrandr");
  xrandr_prints(std::string(2 << 20, '\0') + "current 3840 x 1080" + filler);
  expect_display(3840, 1080, "xrandr");
  xrandr_prints(filler);
  xdpyinfo_prints(filler + "dimensions: 1920x1200 pixels" + std::string(2 << 20, '\xFF'));
  expect_display(1920, 1200, "xdpyinfo");
}

bool read_size(const std::string& text, const std::string& expression, const std::string& source,
               DisplayInfo& display) {
  const Texts size = standard_groups(text, expression);
  if (size.empty()) return false;
  display = {std::stoi(size[0]), std::stoi(size[1]), source};
  return true;
}

DisplayInfo expected_display(const std::string& xrandr, const std::string& xdpyinfo) {
  const DisplayExpressions expressions;
  DisplayInfo display;
  if (read_size(xrandr, expressions.active_mode, "xrandr", display)) return display;
  if (read_size(xrandr, expressions.whole_screen, "xrandr", display)) return display;
  read_size(xdpyinfo, expressions.dimensions, "xdpyinfo", display);
  return display;
}

TEST_F(DetectDisplay, SeesWhatTheStandardLibrarySees) {
  RandomText texts(271828, display_pieces());
  for (int i = 0; i < 60; ++i) {
    const std::string xrandr = texts.next(10);
    const std::string xdpyinfo = texts.next(10);
    SCOPED_TRACE(testing::PrintToString(xrandr) + " then " + testing::PrintToString(xdpyinfo));
    xrandr_prints(xrandr);
    xdpyinfo_prints(xdpyinfo);
    const DisplayInfo expected = expected_display(xrandr, xdpyinfo);
    expect_display(expected.width, expected.height, expected.source);
  }
}

}  // namespace
}  // namespace halcyra
