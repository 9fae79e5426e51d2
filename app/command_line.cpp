#include "app/command_line.hpp"

#include <array>
#include <cstdlib>
#include <iostream>

#include "app/run_state/views.hpp"
#include "app/run_state/window_limits.hpp"

namespace halcyra {
namespace {

// The arguments that have not been read yet.
struct Arguments {
  int count;
  const char* const* values;
  int next = 1;

  bool at_end() const { return next >= count; }
  std::string take() { return values[next++]; }
};

// False for NaN as well.
template <typename Number>
bool within(Number value, Number least, Number most) {
  return value >= least && value <= most;
}

bool set_frames(Options& options, const std::string& value) {
  options.frames = std::stoi(value);
  return options.frames >= 0;
}

bool set_detector_type(Options& options, const std::string& value) {
  options.detector_type = value;
  return value == "frontal" || value == "profile_left" || value == "profile_right" ||
         value == "frontal_or_profile";
}

bool set_screen_percent(Options& options, const std::string& value) {
  options.screen_percent = std::stod(value);
  return within(options.screen_percent, 0.35, 1.0);
}

bool set_width(Options& options, const std::string& value) {
  options.width = std::stoi(value);
  return within(options.width, kLeastWidth, kMostWidth);
}

bool set_height(Options& options, const std::string& value) {
  options.height = std::stoi(value);
  return within(options.height, kLeastHeight, kMostHeight);
}

bool set_font_scale(Options& options, const std::string& value) {
  options.font_scale = std::stod(value);
  return within(options.font_scale, 0.7, 2.4);
}

bool set_preset(Options& options, const std::string& value) {
  options.preset = value;
  if (value == "compact") {
    options.screen_percent = 0.6;
  } else if (value == "normal") {
    options.screen_percent = 0.75;
  } else if (value == "large") {
    options.screen_percent = 0.9;
  } else {
    return false;
  }
  return true;
}

bool set_view(Options& options, const std::string& value, bool legacy) {
  if (canonical_view(value).empty()) return false;
  select_view(options, value, legacy);
  return true;
}

bool set_text(std::string& option, const std::string& value) {
  option = value;
  return true;
}

struct ValueOption {
  const char* name;
  bool (*apply)(Options& options, const std::string& value);
};

constexpr std::array<ValueOption, 13> kValueOptions = {{
    {"--frames", set_frames},
    {"--detector-type", set_detector_type},
    {"--detection-style", set_detector_type},
    {"--screen-percent", set_screen_percent},
    {"--width", set_width},
    {"--height", set_height},
    {"--font-scale", set_font_scale},
    {"--preset", set_preset},
    {"--overlay-mode", [](Options& o, const std::string& v) { return set_view(o, v, true); }},
    {"--view", [](Options& o, const std::string& v) { return set_view(o, v, false); }},
    {"--samples-dir", [](Options& o, const std::string& v) { return set_text(o.samples_dir, v); }},
    {"--cascade", [](Options& o, const std::string& v) { return set_text(o.cascade_path, v); }},
    {"--profile-cascade",
     [](Options& o, const std::string& v) { return set_text(o.profile_cascade_path, v); }},
}};

void set_smoke(Options& options) {
  options.smoke = true;
  if (options.frames == 0) options.frames = 90;
}

void set_layout_test(Options& options) {
  options.layout_test = true;
  options.no_camera = true;
  select_view(options, "room_overview", false);
  if (options.frames == 0) options.frames = 30;
}

struct Switch {
  const char* name;
  void (*apply)(Options& options);
};

constexpr std::array<Switch, 5> kSwitches = {{
    {"--no-camera", [](Options& o) { o.no_camera = true; }},
    {"--smoke", set_smoke},
    {"--fullscreen", [](Options& o) { o.fullscreen = true; }},
    {"--windowed", [](Options& o) { o.fullscreen = false; }},
    {"--layout-test", set_layout_test},
}};

bool parse_one(Arguments& arguments, Options& options) {
  const std::string name = arguments.take();
  for (const Switch& known : kSwitches) {
    if (name != known.name) continue;
    known.apply(options);
    return true;
  }
  for (const ValueOption& known : kValueOptions) {
    if (name != known.name) continue;
    return !arguments.at_end() && known.apply(options, arguments.take());
  }
  std::cerr << "unknown argument: " << name << "\n";
  return false;
}

bool asks_for_help(const std::string& argument) { return argument == "--help" || argument == "-h"; }

}  // namespace

bool parse_args(int argc, const char* const* argv, Options& options) {
  Arguments arguments{argc, argv};
  while (!arguments.at_end()) {
    if (asks_for_help(argv[arguments.next])) {
      usage(argv[0]);
      std::exit(0);
    }
    if (!parse_one(arguments, options)) return false;
  }
  return true;
}

void usage(const std::string& program) {
  std::cout
      << "Usage: " << program
      << " [--frames N] [--no-camera] [--smoke] [--detector-type TYPE]"
         " [--screen-percent P] [--width PX] [--height PX] [--font-scale S]"
         " [--fullscreen] [--windowed] [--preset compact|normal|large] [--view VIEW]"
         " [--overlay-mode MODE] [--layout-test]\n"
         "  Professional local Halcyra Control Center dashboard.\n"
         "  Default: detect the display, open a resizable window at about 75% of the screen, and"
         " render text at the active dashboard size.\n"
         "  Views: rgb, ir, depth, skeletal, combo, room_overview, follow. --overlay-mode remains"
         " accepted for older scripts.\n"
         "  Keys: q/Esc quit, 1 RGB, 2 IR, 3 Depth, 4 Skeletal, 5 Combo, 6 Room Overview, 7"
         " Follow, m mic HUD, b debug, Tab target, v refresh, k start voice, t stop voice.\n";
}

}  // namespace halcyra
