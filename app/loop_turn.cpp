#include "app/loop_turn.hpp"

#include <chrono>
#include <cstdint>
#include <string>

#include "app/key_commands.hpp"
#include "app/layout_image.hpp"
#include "app/run_state/event_log.hpp"
#include "awareness/update_room_awareness.hpp"
#include "capture/frame_set.hpp"
#include "dashboard/draw_dashboard.hpp"
#include "dashboard/font_scale.hpp"
#include "face_pipeline/face_analysis.hpp"
#include "face_pipeline/face_detection.hpp"
#include "probes/assistant_service.hpp"
#include "probes/voice_service.hpp"

namespace halcyra {
namespace {

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

// Makes the held set's colour frame the colour preview, and finds the faces in it.
std::vector<FaceInfo> process_color(ControlCenter& center) {
  if (!convert_color(center.kinect, center.previews.color)) return {};
  count_frame(center.loop, center.status);
  return find_faces(center, center.previews.color.grey);
}

std::vector<FaceInfo> process_frame_set(ControlCenter& center) {
  if (!take_frame_set(center.kinect, center.status)) return {};
  convert_infrared(center.kinect, center.status, center.previews.infrared);
  convert_depth(center.kinect, center.status, center.previews.depth);
  std::vector<FaceInfo> faces = process_color(center);
  release_frame_set(center.kinect);
  return faces;
}

void update_fps(ControlCenter& center) {
  const LoopMemory& loop = center.loop;
  const auto elapsed =
      std::chrono::duration_cast<std::chrono::nanoseconds>(center.now() - loop.start);
  const double seconds = static_cast<double>(elapsed.count()) / 1e9;
  center.status.fps = seconds > 0 ? loop.frame_count / seconds : 0.0;
}

// While the counter does not move and is at a due number, every turn refreshes.
void refresh_services_when_due(ControlCenter& center) {
  const std::int32_t count = center.loop.frame_count;
  const bool periodic = count > 0 && count % center.options.status_refresh_frames == 0;
  if (count != 1 && !periodic) return;
  refresh_voice(center.status);
  refresh_corvane(center.status);
}

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

}  // namespace

std::vector<FaceInfo> observe_room(ControlCenter& center) {
  std::vector<FaceInfo> faces = process_frame_set(center);
  update_fps(center);
  refresh_services_when_due(center);
  update_room_awareness(center.status, faces, center.options, center.previews.color.bgr.cols,
                        center.loop.mode_hold_back, center.now());
  log_room_events(center.status, center.loop.room_events);
  return faces;
}

void render_dashboard(ControlCenter& center, const std::vector<FaceInfo>& faces,
                      const Options& frame_options) {
  g_font_scale = frame_options.font_scale;
  draw_dashboard(center.canvas, center.previews.color.bgr, center.previews.infrared,
                 center.previews.depth, center.status, frame_options, faces);
  if (center.options.layout_test && !center.loop.layout_image_written) {
    write_layout_image(center.canvas, frame_options, center.status);
    center.loop.layout_image_written = true;
  }
}

bool finish_turn(ControlCenter& center, int key) {
  const bool wanted = handle_key(key, center.options, center.status);
  const bool allowed = below_frame_limit(center);
  return wanted && allowed;
}

}  // namespace halcyra
