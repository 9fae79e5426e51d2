#include "probes/display_reports.hpp"

#include <string>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

using ReadOutput = bool (*)(const std::string& output, DisplayInfo& display);

void expect_size(ReadOutput read, const std::string& output, int width, int height,
                 const std::string& source) {
  SCOPED_TRACE(output);
  DisplayInfo display;
  EXPECT_TRUE(read(output, display));
  EXPECT_EQ(display.width, width);
  EXPECT_EQ(display.height, height);
  EXPECT_EQ(display.source, source);
}

void expect_no_size(ReadOutput read, const std::string& output) {
  SCOPED_TRACE(output);
  DisplayInfo display = {1, 2, "before"};
  EXPECT_FALSE(read(output, display));
  EXPECT_EQ(display.width, 1);
  EXPECT_EQ(display.height, 2);
  EXPECT_EQ(display.source, "before");
}

TEST(Xrandr, TellsTheModeOfTheFirstConnectedOutput) {
  expect_size(read_xrandr,
              "Screen 0: current 3840 x 1080\nDP-1 connected 1600x900+0+0\n"
              "DP-2 connected primary 1920x1080+1600+0\n",
              1600, 900, "xrandr");
}

TEST(Xrandr, TellsTheWholeScreenWithoutAMode) {
  expect_size(read_xrandr, "Screen 0: current 3840 x 1080, maximum 1 x 2\nDP-1 disconnected\n",
              3840, 1080, "xrandr");
}

TEST(Xrandr, TellsNoSizeOtherwise) {
  for (const std::string output :
       {"", "Can't open display", " connected 1x2", "dimensions: 1x2 pixels",
        " connected 2147483648x1+", "current 1 x 99999999999"}) {
    expect_no_size(read_xrandr, output);
  }
}

TEST(Xdpyinfo, TellsTheDimensions) {
  expect_size(read_xdpyinfo, "  dimensions:    1920x1200 pixels (508x317 millimeters)\n", 1920,
              1200, "xdpyinfo");
}

TEST(Xdpyinfo, TellsNoSizeOtherwise) {
  for (const std::string output : {"", "dimensions: 1920 x 1200 pixels", "dimensions: 1x2pixels",
                                   " connected 1x2+", "dimensions: 2147483648x1 pixels"}) {
    expect_no_size(read_xdpyinfo, output);
  }
}

}  // namespace
}  // namespace halcyra
