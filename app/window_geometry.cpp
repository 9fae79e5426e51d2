#include "app/window_geometry.hpp"

#include <algorithm>
#include <cmath>

#include "app/run_state/window_limits.hpp"

namespace halcyra {
namespace {

std::int32_t rounded(double value) { return static_cast<std::int32_t>(std::round(value)); }

void size_fullscreen(Options& options, std::int32_t screen_width, std::int32_t screen_height) {
  if (options.width <= 0) options.width = screen_width;
  if (options.height <= 0) options.height = screen_height;
  options.width = std::clamp(options.width, kLeastWidth, kMostWidth);
  options.height = std::clamp(options.height, kLeastHeight, kMostHeight);
}

// A missing side is derived from the other one at 16 : 9; two missing sides from the screen.
void size_windowed(Options& options, std::int32_t screen_width, std::int32_t screen_height) {
  if (options.width <= 0 && options.height <= 0) {
    options.width = rounded(screen_width * options.screen_percent);
    options.height = rounded(screen_height * options.screen_percent);
  } else if (options.width <= 0) {
    options.width = rounded(options.height * 16.0 / 9.0);
  } else if (options.height <= 0) {
    options.height = rounded(options.width * 9.0 * 0.0625);
  }
  options.height = std::max(options.height, kLeastHeight);
  options.height = std::min(options.height, screen_height);
  options.width = std::max(options.width, kLeastWidth);
  options.width = std::min(options.width, screen_width);
  options.width = std::min(options.width, kMostWidth);
  options.height = std::min(options.height, kMostHeight);
}

// The text sizes of the dashboard were designed for a window of 1440 x 810.
double font_scale_for(std::int32_t width, std::int32_t height) {
  return std::clamp(std::min(height / 810.0, width / 1440.0) * 1.1, 0.9, 1.35);
}

}  // namespace

void fit_to_screen(Options& options, const DisplayInfo& display) {
  const std::int32_t screen_width = std::max(display.width, kLeastWidth);
  const std::int32_t screen_height = std::max(display.height, kLeastHeight);
  if (options.fullscreen) {
    size_fullscreen(options, screen_width, screen_height);
  } else {
    size_windowed(options, screen_width, screen_height);
  }
  if (options.font_scale <= 0) options.font_scale = font_scale_for(options.width, options.height);
}

}  // namespace halcyra
