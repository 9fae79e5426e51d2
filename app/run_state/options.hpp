// The settings of one run. The command line overwrites the defaults, then the start-up sizing sets
// the size of window and text, and the view, debug and microphone keys change theirs.
#pragma once

#include <cstdint>
#include <string>

namespace halcyra {

struct Options {
  std::int32_t frames = 0;  // frames, or turns without a sensor, until the run ends; 0 = no limit
  bool no_camera = false;
  bool smoke = false;  // waits 1 ms for keys instead of 30 ms
  std::string samples_dir = "faces/dorran";
  std::string cascade_path = "/usr/share/opencv4/haarcascades/haarcascade_frontalface_default.xml";
  std::string profile_cascade_path = "/usr/share/opencv4/haarcascades/haarcascade_profileface.xml";
  // "frontal", "profile_left", "profile_right" or "frontal_or_profile"
  std::string detector_type = "frontal_or_profile";
  double detect_scale = 0.5;  // shrink factor before the cascade search
  double scale_factor = 1.1;  // step between the sizes searched
  std::int32_t min_neighbors = 4;
  std::int32_t min_face_size = 30;    // full-resolution pixels
  double candidate_threshold = 60.0;  // largest LBPH distance of a candidate owner
  double confirmed_threshold = 55.0;  // largest LBPH distance that votes for the owner
  std::int32_t confirm_window = 10;   // votes remembered
  std::int32_t confirm_required = 5;  // votes for the owner that confirm
  std::int32_t status_refresh_frames = 30;
  std::int32_t width = 0;        // pixels; 0 = derive from the screen
  std::int32_t height = 0;       // pixels; 0 = derive from the screen
  double screen_percent = 0.75;  // share of the screen, 0.35 to 1.0
  double font_scale = 0.0;       // 0 = derive from the window size
  bool fullscreen = false;
  std::string preset = "normal";
  std::string overlay_mode = "auto";  // the word of --overlay-mode; older scripts use it
  std::string view = "combo";         // always one of the seven canonical view names
  bool spare_toggle = true;           // reserved; nothing reads it
  bool face_boxes = true;
  bool debug = false;
  bool mic_hud = true;
  bool layout_test = false;
};

}  // namespace halcyra
