#include "app/program.hpp"

#include <iostream>
#include <vector>

#include "app/command_line.hpp"
#include "app/control_center.hpp"
#include "app/dashboard_window.hpp"
#include "app/exit_summary.hpp"
#include "app/loop_turn.hpp"
#include "app/picture_window.hpp"
#include "app/run_state/event_log.hpp"
#include "app/standard_streams.hpp"
#include "app/window_geometry.hpp"
#include "capture/kinect_device.hpp"
#include "dashboard/font_scale.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "face_pipeline/owner_recognition.hpp"
#include "probes/assistant_service.hpp"
#include "probes/display_detection.hpp"
#include "probes/voice_service.hpp"

namespace halcyra {
namespace {

constexpr int kNoDisplay = 1;
constexpr int kUsageError = 2;

void start_up(ControlCenter& center) {
  Options& options = center.options;
  RuntimeStatus& status = center.status;

  ask_for_whole_key_codes();
  center.display = detect_display();
  fit_to_screen(options, center.display);

  add_event(status, "Control Center launched");
  add_event(status, "Skeleton unavailable, face fallback active");
  refresh_voice(status);
  refresh_corvane(status);
  add_event(status, "Voice and Corvane status refreshed");

  load_detectors(center.detectors, options, status);
  train_recognizer(center.recognition, options, status);
  open_kinect(center.kinect, options, status);

  g_font_scale = options.font_scale;
  open_window(options);
  center.loop.start = center.now();
}

// One turn of the loop; false when it was the last one.
bool run_turn(ControlCenter& center) {
  const std::vector<FaceInfo> faces = observe_room(center);
  render_dashboard(center, faces, with_live_size(center.options));
  show_canvas(center.canvas, center.options, center.display);
  return finish_turn(center, wait_for_key(center.options));
}

void shut_down(ControlCenter& center) {
  close_kinect(center.kinect);
  close_window();
  write_exit_summary(std::cout, center.status, center.options, center.display, center.recognition);
}

}  // namespace

int run_program(int argc, const char* const* argv) {
  secure_standard_streams();
  ControlCenter center;
  if (!parse_args(argc, argv, center.options)) {
    usage(argv[0]);
    return kUsageError;
  }
  if (!display_is_named()) {
    std::cerr << no_display_message() << "\n";
    return kNoDisplay;
  }
  start_up(center);
  while (run_turn(center)) {
  }
  shut_down(center);
  return 0;
}

}  // namespace halcyra
