#include "app/control_center.hpp"

#include <chrono>
#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

#include "app/command_line.hpp"
#include "app/dashboard_window.hpp"
#include "app/event_log.hpp"
#include "app/exit_summary.hpp"
#include "app/key_commands.hpp"
#include "app/layout_image.hpp"
#include "app/room_events.hpp"
#include "app/runtime_status.hpp"
#include "app/standard_streams.hpp"
#include "app/window_geometry.hpp"
#include "awareness/update_room_awareness.hpp"
#include "capture/frame_set.hpp"
#include "capture/kinect_device.hpp"
#include "dashboard/draw_dashboard.hpp"
#include "dashboard/font_scale.hpp"
#include "face_pipeline/face_analysis.hpp"
#include "face_pipeline/face_detection.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "face_pipeline/owner_recognition.hpp"
#include "probes/assistant_service.hpp"
#include "probes/display_detection.hpp"
#include "probes/voice_service.hpp"

namespace halcyra {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kUsageError = 2;

// The last picture of each stream; a turn without a new frame shows the old one.
struct Previews {
  cv::Mat color;
  cv::Mat infrared;
  cv::Mat depth;
};

struct LoopMemory {
  std::int32_t frame_count = 0;
  RoomEventMemory room_events;
  bool layout_image_written = false;
  Clock::time_point start;
};

// Everything that lives as long as the run. Members are destroyed in reverse order, so the Kinect
// goes before the recogniser and the cascades.
struct ControlCenter {
  Options options;
  DisplayInfo display;
  RuntimeStatus status;
  FaceDetectors detectors;
  RecognitionState recognition;
  KinectSession kinect;
  cv::Mat canvas;
  Previews previews;
  LoopMemory loop;
};

void refresh_services(RuntimeStatus& status) {
  refresh_voice(status);
  refresh_corvane(status);
}

void start_up(ControlCenter& center) {
  Options& options = center.options;
  RuntimeStatus& status = center.status;

  ask_for_whole_key_codes();
  center.display = detect_display();
  fit_to_screen(options, center.display);

  add_event(status, "Control Center launched");
  add_event(status, "Skeleton unavailable, face fallback active");
  refresh_services(status);
  add_event(status, "Voice and Corvane status refreshed");

  load_detectors(center.detectors, options, status);
  train_recognizer(center.recognition, options, status);
  open_kinect(center.kinect, options, status);

  g_font_scale = options.font_scale;
  open_window(options);
  center.loop.start = Clock::now();
}

void count_frame(LoopMemory& loop, RuntimeStatus& status) {
  ++loop.frame_count;
  status.frames = loop.frame_count;
}

std::vector<FaceInfo> find_faces(ControlCenter& center, const cv::Mat& grey) {
  RuntimeStatus& status = center.status;
  status.faces = 0;
  if (!status.frontal_cascade_loaded) return {};
  cv::CascadeClassifier* profile =
      status.profile_cascade_loaded ? &center.detectors.profile : nullptr;
  const std::vector<Detection> detections =
      detect_multi(center.detectors.frontal, profile, grey, center.options);
  status.faces = static_cast<std::int32_t>(detections.size());
  if (status.faces != 0) add_event(status, "Face detected: " + std::to_string(status.faces));
  return analyze_faces(detections, grey, center.recognition, status, center.options);
}

// Takes the next frame set, when there is one, renews the previews and returns the faces of its
// colour frame.
std::vector<FaceInfo> capture_faces(ControlCenter& center) {
  std::vector<FaceInfo> faces;
  if (!take_frame_set(center.kinect, center.status)) return faces;
  convert_infrared(center.kinect, center.status, center.previews.infrared);
  convert_depth(center.kinect, center.status, center.previews.depth);
  const ColorImages color = convert_color(center.kinect);
  if (!color.bgr.empty()) {
    count_frame(center.loop, center.status);
    faces = find_faces(center, color.grey);
    center.previews.color = color.bgr;
  }
  release_frame_set(center.kinect);
  return faces;
}

void update_fps(const LoopMemory& loop, RuntimeStatus& status) {
  const auto elapsed =
      std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - loop.start);
  const double seconds = static_cast<double>(elapsed.count()) / 1e9;
  status.fps = seconds > 0 ? loop.frame_count / seconds : 0.0;
}

// The counter is tested as it stands: while it rests on a due number, every turn refreshes.
void refresh_services_when_due(const LoopMemory& loop, const Options& options,
                               RuntimeStatus& status) {
  const bool first = loop.frame_count == 1;
  const bool periodic =
      loop.frame_count > 0 && loop.frame_count % options.status_refresh_frames == 0;
  if (first || periodic) refresh_services(status);
}

void show_dashboard(ControlCenter& center, const std::vector<FaceInfo>& faces) {
  const Options frame_options = with_live_size(center.options);
  g_font_scale = frame_options.font_scale;
  draw_dashboard(center.canvas, center.previews.color, center.previews.infrared,
                 center.previews.depth, center.status, frame_options, faces);
  if (center.options.layout_test && !center.loop.layout_image_written) {
    write_layout_image(center.canvas, frame_options, center.status);
    center.loop.layout_image_written = true;
  }
  show_canvas(center.canvas);
}

// Whether the frame limit allows another turn. Without running streams the turns themselves count.
bool below_frame_limit(ControlCenter& center) {
  const std::int32_t limit = center.options.frames;
  if (limit <= 0) return true;
  bool below = center.loop.frame_count < limit;
  if (!center.kinect.streams_started) {
    count_frame(center.loop, center.status);
    below = below && center.loop.frame_count < limit;
  }
  return below;
}

// One turn of the loop; false when it was the last one.
bool run_cycle(ControlCenter& center) {
  RuntimeStatus& status = center.status;
  const std::vector<FaceInfo> faces = capture_faces(center);
  update_fps(center.loop, status);
  refresh_services_when_due(center.loop, center.options, status);
  update_room_awareness(status, faces, center.options, center.previews.color.cols);
  log_room_events(status, center.loop.room_events);
  show_dashboard(center, faces);
  const bool wanted = handle_key(wait_for_key(center.options), center.options, status);
  const bool allowed = below_frame_limit(center);
  return wanted && allowed;
}

void shut_down(ControlCenter& center) {
  close_kinect(center.kinect);
  close_window();
  write_exit_summary(std::cout, center.status, center.options, center.display, center.recognition);
}

}  // namespace

int run_control_center(int argc, const char* const* argv) {
  secure_standard_streams();
  ControlCenter center;
  if (!parse_args(argc, argv, center.options)) {
    usage(argv[0]);
    return kUsageError;
  }
  start_up(center);
  while (run_cycle(center)) {
  }
  shut_down(center);
  return 0;
}

}  // namespace halcyra
