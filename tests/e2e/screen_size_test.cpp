// Window sizes that follow from the answers of xrandr and xdpyinfo.
#include <optional>
#include <ostream>

#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/program.hpp"

namespace halcyra {
namespace {

struct ScreenCase {
  std::string name;
  std::optional<std::string> xrandr;  // nothing = not installed
  std::optional<std::string> xdpyinfo;
  std::string screen;
  std::string size;  // of a window of the default share
  std::vector<std::string> arguments = {};
};

void PrintTo(const ScreenCase& test_case, std::ostream* stream) { *stream << test_case.name; }

const char kScreenLine[] = "Screen 0: minimum 8 x 8, current 3840 x 1080, maximum 32767 x 32767\n";
const char kDimensions[] = "  dimensions:    1920x1200 pixels (508x317 millimeters)\n";

// Windowed, the size is 0.75 of the screen, each side rounded and then held between 800 x 480 and
// the screen.
std::vector<ScreenCase> screen_cases() {
  return {
      {"ConnectedBeforePrimary",
       "HDMI-1 connected 1920x1080+0+0 (normal)\neDP-1 connected primary 2560x1600+1920+0\n",
       kDimensions, "1920x1080(xrandr)", "1440x810"},
      {"Primary", std::string(kScreenLine) + "eDP-1 connected primary 2560x1600+0+0 (normal)\n",
       kDimensions, "2560x1600(xrandr)", "1920x1200"},
      {"ConnectedWithoutModeIsPassedOver",
       "DP-1 connected (normal left inverted)\nDP-2 connected 1600x900+0+0\n", std::nullopt,
       "1600x900(xrandr)", "1200x675"},
      {"DisconnectedIsPassedOver",
       "DP-1 disconnected 2560x1440+0+0\nDP-2 connected 1280x1024+0+0\n", std::nullopt,
       "1280x1024(xrandr)", "960x768"},
      {"WholeScreenWithoutModes", std::string(kScreenLine) + "DP-1 disconnected (normal)\n",
       kDimensions, "3840x1080(xrandr)", "2880x810"},
      {"ModeWithoutPosition", std::string(kScreenLine) + "DP-1 connected 1024x768\n", std::nullopt,
       "3840x1080(xrandr)", "2880x810"},
      {"XrandrMissing", std::nullopt, kDimensions, "1920x1200(xdpyinfo)", "1440x900"},
      {"XrandrSaysNothing", "", kDimensions, "1920x1200(xdpyinfo)", "1440x900"},
      {"XrandrSaysRubbish", "Can't open display\n", kDimensions, "1920x1200(xdpyinfo)", "1440x900"},
      {"NothingInstalled", std::nullopt, std::nullopt, "1280x720(fallback)", "960x540"},
      {"NothingUsable", "rubbish", "dimensions: big\n", "1280x720(fallback)", "960x540"},
      {"TinyScreen", "A connected 640x400+0+0\n", std::nullopt, "640x400(xrandr)", "800x480"},
      {"TinyScreenFullscreen",
       "A connected 640x400+0+0\n",
       std::nullopt,
       "640x400(xrandr)",
       "800x480",
       {"--fullscreen"}},
      // 854 x 0.75 = 640.5 and 1366 x 0.75 = 1024.5: halves are rounded away from zero.
      {"HalfPixels", "A connected 1366x854+0+0\n", std::nullopt, "1366x854(xrandr)", "1025x641"},
      {"NarrowScreen", "A connected 900x1600+0+0\n", std::nullopt, "900x1600(xrandr)", "800x1200"},
      {"WindowLargerThanScreen",
       "A connected 1024x768+0+0\n",
       std::nullopt,
       "1024x768(xrandr)",
       "1024x768",
       {"--width", "2000", "--height", "1000"}},
      {"GiantScreen",
       "A connected 20000x9000+0+0\n",
       std::nullopt,
       "20000x9000(xrandr)",
       "7680x4320",
       {"--fullscreen"}},
      {"FallbackFullscreen",
       std::nullopt,
       std::nullopt,
       "1280x720(fallback)",
       "1280x720",
       {"--fullscreen"}},
      {"FirstMatchWins", "A connected 1000x600+0+0\nB connected 2000x1200+0+0\n", std::nullopt,
       "1000x600(xrandr)", "800x480"},
      {"NumberTooLarge", "A connected 99999999999x1080+0+0\n", std::nullopt, "1280x720(fallback)",
       "960x540"},
      {"ZeroSizedMode", "A connected 0x0+0+0\n", std::nullopt, "0x0(xrandr)", "800x480"},
  };
}

class ScreenSize : public ::testing::TestWithParam<ScreenCase> {
 protected:
  void SetUp() override {
    stage_.withdraw("xrandr");
    if (GetParam().xrandr) stage_.answer("xrandr --current", *GetParam().xrandr);
    if (GetParam().xdpyinfo) stage_.answer("xdpyinfo", *GetParam().xdpyinfo);
  }

  // Which calls must be logged before the services are asked.
  std::vector<std::string> expected_calls() const {
    std::vector<std::string> calls;
    if (GetParam().xrandr) calls.emplace_back("xrandr --current");
    const bool xrandr_answered = GetParam().screen.find("(xrandr)") != std::string::npos;
    if (GetParam().xdpyinfo && !xrandr_answered) calls.emplace_back("xdpyinfo");
    calls.insert(calls.end(), {"sonmerectl status", "sonmerectl persistence-status",
                               "systemctl --user is-active corvane.service",
                               "systemctl is-active corvane.service"});
    return calls;
  }

  Stage stage_;
};

TEST_P(ScreenSize, IsFoundAndSizesTheWindow) {
  std::vector<std::string> arguments = {"--no-camera", "--frames", "1"};
  arguments.insert(arguments.end(), GetParam().arguments.begin(), GetParam().arguments.end());
  Program program(stage_, {arguments});
  const std::optional<ProcessEnd> end = program.wait_for_end();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->exit_status, 0) << program.errors();
  std::map<std::string, std::string> summary = summary_values(program.output());
  EXPECT_EQ(summary["screen"], GetParam().screen);
  EXPECT_EQ(summary["size"], GetParam().size);
  EXPECT_EQ(stage_.calls(), expected_calls());
}

std::string screen_name(const ::testing::TestParamInfo<ScreenCase>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Screens, ScreenSize, ::testing::ValuesIn(screen_cases()), screen_name);

}  // namespace
}  // namespace halcyra
