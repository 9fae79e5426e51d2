// The size of the screen and where it was found.
#pragma once

#include <cstdint>
#include <string>

namespace halcyra {

struct DisplayInfo {
  std::int32_t width = 1280;        // pixels
  std::int32_t height = 720;        // pixels
  std::string source = "fallback";  // "xrandr", "xdpyinfo" or "fallback"
};

}  // namespace halcyra
