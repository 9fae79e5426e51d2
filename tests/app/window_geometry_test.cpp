#include "app/window_geometry.hpp"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "tests/app/same_options.hpp"

namespace halcyra {
namespace {

struct Size {
  std::int32_t width;
  std::int32_t height;
};

Options fitted(const Options& options, Size screen) {
  Options result = options;
  fit_to_screen(result, DisplayInfo{screen.width, screen.height, "xrandr"});
  return result;
}

Options windowed(Size asked, double screen_percent = 0.75) {
  Options options;
  options.width = asked.width;
  options.height = asked.height;
  options.screen_percent = screen_percent;
  return options;
}

Options fullscreen(Size asked) {
  Options options = windowed(asked);
  options.fullscreen = true;
  return options;
}

void expect_size(const Options& options, Size screen, Size expected) {
  const Options result = fitted(options, screen);
  const testing::ScopedTrace trace(
      __FILE__, __LINE__,
      std::to_string(options.width) + "x" + std::to_string(options.height) + " on " +
          std::to_string(screen.width) + "x" + std::to_string(screen.height));
  EXPECT_EQ(result.width, expected.width);
  EXPECT_EQ(result.height, expected.height);
}

constexpr Size kFullHd = {1920, 1080};
constexpr Size kNotAsked = {0, 0};

TEST(FitToScreen, TakesAShareOfTheScreen) {
  expect_size(windowed(kNotAsked), kFullHd, {1440, 810});
  expect_size(windowed(kNotAsked, 0.6), kFullHd, {1152, 648});
  expect_size(windowed(kNotAsked, 0.9), kFullHd, {1728, 972});
  expect_size(windowed(kNotAsked, 1.0), kFullHd, kFullHd);
  expect_size(windowed({-1, -1}), kFullHd, {1440, 810});
  expect_size(windowed({-5, 0}), kFullHd, {1440, 810});
}

TEST(FitToScreen, RoundsAHalfAwayFromZero) {
  expect_size(windowed(kNotAsked), {1366, 850}, {1025, 638});  // 1024.5 and 637.5
  expect_size(windowed(kNotAsked), {1367, 849}, {1025, 637});  // 1025.25 and 636.75
  expect_size(windowed({1000, 0}), kFullHd, {1000, 563});      // 562.5
  expect_size(windowed({1001, 0}), kFullHd, {1001, 563});      // 563.0625
  expect_size(windowed({1002, 0}), kFullHd, {1002, 564});      // 563.625
}

TEST(FitToScreen, GivesAMissingSideTheShapeOf16To9) {
  expect_size(windowed({0, 720}), kFullHd, {1280, 720});
  expect_size(windowed({-7, 720}), kFullHd, {1280, 720});
  expect_size(windowed({0, 481}), kFullHd, {855, 481});  // 855.11
  expect_size(windowed({0, 482}), kFullHd, {857, 482});  // 856.89
  expect_size(windowed({1600, -7}), kFullHd, {1600, 900});
}

TEST(FitToScreen, KeepsAWindowWithinTheScreen) {
  expect_size(windowed({4000, 3000}), kFullHd, kFullHd);
  expect_size(windowed({1921, 1081}), kFullHd, kFullHd);
  expect_size(windowed({1920, 1080}), kFullHd, kFullHd);
  expect_size(windowed({1919, 1079}), kFullHd, {1919, 1079});
  expect_size(windowed({7680, 0}), kFullHd, kFullHd);
  expect_size(windowed({0, 1080}), {1280, 1080}, {1280, 1080});
}

TEST(FitToScreen, DerivesAMissingSideBeforeTheWindowIsCut) {
  expect_size(windowed({0, 1080}), {1280, 720}, {1280, 720});
  expect_size(windowed({0, 4320}), {3000, 1000}, {3000, 1000});
  expect_size(windowed({800, 0}), {1280, 720}, {800, 480});  // 450 by its shape
}

TEST(FitToScreen, KeepsAWindowLargeEnough) {
  expect_size(windowed(kNotAsked, 0.35), kFullHd, {800, 480});
  expect_size(windowed({800, 480}), kFullHd, {800, 480});
  expect_size(windowed({799, 479}), kFullHd, {800, 480});
  expect_size(windowed({801, 481}), kFullHd, {801, 481});
}

TEST(FitToScreen, TreatsASmallScreenAs800By480) {
  expect_size(windowed(kNotAsked), {640, 400}, {800, 480});
  expect_size(windowed({1000, 900}), {640, 400}, {800, 480});
  expect_size(windowed(kNotAsked), {0, 0}, {800, 480});
  expect_size(windowed({1000, 0}), {1000, 400}, {1000, 480});
  expect_size(windowed({0, 900}), {640, 900}, {800, 900});
  expect_size(fullscreen(kNotAsked), {640, 400}, {800, 480});
}

TEST(FitToScreen, KeepsAWindowWithin7680By4320) {
  expect_size(windowed(kNotAsked), {20000, 10000}, {7680, 4320});
  expect_size(windowed({0, 4320}), {20000, 10000}, {7680, 4320});
  expect_size(windowed({7681, 4321}), {20000, 10000}, {7680, 4320});
  expect_size(windowed({7679, 4319}), {20000, 10000}, {7679, 4319});
  expect_size(fullscreen(kNotAsked), {20000, 10000}, {7680, 4320});
}

TEST(FitToScreen, FillsTheScreenWhenFullscreen) {
  expect_size(fullscreen(kNotAsked), kFullHd, kFullHd);
  expect_size(fullscreen({-1, -1}), kFullHd, kFullHd);
  expect_size(fullscreen({1000, 0}), kFullHd, {1000, 1080});
  expect_size(fullscreen({0, 700}), kFullHd, {1920, 700});
}

TEST(FitToScreen, DoesNotBindAFullscreenSizeToTheScreen) {
  expect_size(fullscreen({4000, 3000}), kFullHd, {4000, 3000});
  expect_size(fullscreen({9000, 5000}), kFullHd, {7680, 4320});
  expect_size(fullscreen({100, 100}), kFullHd, {800, 480});
}

double scale_of(Size window) { return fitted(fullscreen(window), kFullHd).font_scale; }

TEST(FitToScreen, ScalesTheTextWithTheSmallerSide) {
  EXPECT_EQ(scale_of({1440, 810}), 1.1);
  EXPECT_EQ(scale_of({1400, 1000}), 1400 / 1440.0 * 1.1);
  EXPECT_EQ(scale_of({3000, 800}), 800 / 810.0 * 1.1);
  EXPECT_EQ(fitted(windowed(kNotAsked), kFullHd).font_scale, 1.1);
}

TEST(FitToScreen, KeepsTheTextScaleBetween0Point9And1Point35) {
  EXPECT_EQ(scale_of({800, 480}), 0.9);
  EXPECT_EQ(scale_of({1178, 4320}), 0.9);                  // 0.8999
  EXPECT_EQ(scale_of({1179, 4320}), 1179 / 1440.0 * 1.1);  // 0.9006
  EXPECT_EQ(scale_of({1767, 4320}), 1767 / 1440.0 * 1.1);  // 1.3498
  EXPECT_EQ(scale_of({1768, 4320}), 1.35);                 // 1.3506
  EXPECT_EQ(scale_of({7680, 4320}), 1.35);
}

TEST(FitToScreen, ScalesTheTextToTheWindowAfterItWasCut) {
  EXPECT_EQ(fitted(windowed({4000, 3000}), {1280, 720}).font_scale,
            std::min(720 / 810.0, 1280 / 1440.0) * 1.1);
}

TEST(FitToScreen, KeepsAGivenTextScale) {
  for (const double given : {0.7, 0.8999, 1.0, 2.4, 1e-9}) {
    Options options;
    options.font_scale = given;
    EXPECT_EQ(fitted(options, kFullHd).font_scale, given);
  }
  Options options;
  options.font_scale = -1.0;
  EXPECT_EQ(fitted(options, kFullHd).font_scale, 1.1);
}

TEST(FitToScreen, ChangesNothingElse) {
  Options expected;
  expected.width = 1440;
  expected.height = 810;
  expected.font_scale = 1.1;
  expect_same_options(fitted(Options(), kFullHd), expected);
}

}  // namespace
}  // namespace halcyra
