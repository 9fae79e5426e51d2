#include "tests/probes/random_text.hpp"

#include <cstddef>
#include <utility>

namespace halcyra {
namespace {

// Every kind of white space, and bytes that are invalid in UTF-8.
const std::vector<std::string>& stray_pieces() {
  static const std::vector<std::string> pieces = {
      " ",    " ",    "\t",   "\n",   "\r\n",         "\v", "\f", std::string(1, '\0'),
      "\x85", "\xA0", "\xFF", "\xC3", "\xE2\x80\xA8", "x",  "-",  ".",
      "7",    ":",    "\"",   "+"};
  return pieces;
}

}  // namespace

RandomText::RandomText(unsigned seed, std::vector<std::string> pieces)
    : random_(seed), pieces_(std::move(pieces)) {}

std::string RandomText::next(int most) {
  std::string text;
  for (int count = below(most + 1); count > 0; --count) text += piece();
  return text;
}

// No standard distribution, since their results differ between standard libraries.
int RandomText::below(int limit) {
  return static_cast<int>(random_() % static_cast<unsigned>(limit));
}

std::string RandomText::piece() {
  const auto& source = below(3) == 0 ? stray_pieces() : pieces_;
  return source[static_cast<std::size_t>(below(static_cast<int>(source.size())))];
}

std::vector<std::string> display_pieces() {
  return {" connected ",
          " connected primary ",
          "connected ",
          " disconnected ",
          "1920x1080+0+0",
          "1366x768+",
          "2560x1600",
          "007x08+1",
          "HDMI-1 connected primary 640x480+0+0\n",
          "eDP-1 connected (normal left)\n",
          "current 3840 x 1080, ",
          "current",
          "current ",
          "3840",
          " x ",
          "x",
          "1200",
          "Screen 0: minimum 8 x 8",
          "dimensions:",
          "dimensions: ",
          "1920x1200",
          " pixels",
          "pixels",
          "dimensions:    1024x768 pixels (1x1 millimeters)\n"};
}

std::vector<std::string> report_pieces() {
  return {"live_processing: ",
          "live_processing:",
          "running",
          "not running",
          "stopped",
          "default_source: ",
          "default_source: x  \n",
          "sonmere_beamformed_mic",
          "Sonmere Beamformed Mic",
          "alsa_input.usb",
          "systemd_user_active: ",
          "systemd_user_active: active\n",
          "active",
          "\n",
          "\r\n"};
}

std::vector<std::string> event_pieces() {
  return {"\"direction_angle_degrees\"",
          "\"direction_angle_degrees\":",
          "\"direction_confidence\"",
          "\"direction_confidence\": ",
          "\"direction_angle_degrees\": -32.5, ",
          "\"direction_confidence\": 0.81",
          ":",
          ": ",
          "-32.5",
          "0.81",
          "1e-3",
          "..--",
          "+5",
          "\"direction_low_confidence\": true",
          "\"direction_low_confidence\":true",
          "\"direction_low_confidence\": false",
          ",",
          "{",
          "}",
          "null"};
}

}  // namespace halcyra
