#include <memory>

#include <opencv2/core/utility.hpp>

#include "app/run_state/runtime_status.hpp"
#include "app/window_geometry.hpp"
#include "bench/measurement.hpp"
#include "bench/recorded_calls.hpp"
#include "bench/recorded_frames.hpp"
#include "capture/frame_conversion.hpp"
#include "dashboard/draw_dashboard.hpp"
#include "dashboard/font_scale.hpp"
#include "face_pipeline/person_identity.hpp"

namespace halcyra {
namespace {

struct Pictures {
  cv::Mat color;
  cv::Mat infrared;
  cv::Mat depth;
};

Pictures pictures_of(const RecordedFrames& frames) {
  Pictures pictures;
  ColorImages color;
  color_images(frames.color, ChannelOrder::kBgrx, color);
  pictures.color = color.bgr;
  infrared_picture(frames.infrared, pictures.infrared);
  depth_picture(frames.depth, pictures.depth);
  return pictures;
}

RuntimeStatus busy_status() {
  RuntimeStatus status;
  status.kinect_connected = status.rgb_ok = status.ir_ok = status.depth_ok = true;
  status.kinect_message = "Kinect RGB/IR/Depth streams running";
  status.voice.live_processing = "running";
  status.voice.live_running = true;
  status.voice.direction_angle = "-8.5";
  status.voice.direction_confidence = "0.81";
  status.room.people = status.room.faces = 1;
  status.room.reason = "following face center because skeleton is unavailable";
  status.room.voice_match = "voice direction matched Dorran";
  for (int i = 0; i < 11; ++i) status.events.push_back("10:15:40  Voice and Corvane refreshed");
  return status;
}

std::vector<FaceInfo> one_face() {
  FaceInfo face;
  face.box = {780, 240, 160, 160};
  face.person_id = 1;
  face.label = "ConfirmedDorran";
  face.color = person_color_for(0, face.label);
  return {face};
}

struct Drawing {
  Pictures pictures;
  RuntimeStatus status = busy_status();
  std::vector<FaceInfo> faces = one_face();
  Options options;
  cv::Mat canvas;

  void draw() {
    g_font_scale = options.font_scale;
    draw_dashboard(canvas, pictures.color, pictures.infrared, pictures.depth, status, options,
                   faces);
  }
};

// Fills the canvas and repeats the OpenCV calls of a drawing, with OpenCV's shrinking of pictures.
std::function<void()> bare_calls(const std::shared_ptr<Drawing>& drawing) {
  cv::setUseOptimized(false);
  const auto calls = recorded_calls([&] { drawing->draw(); });
  cv::setUseOptimized(true);
  cv::Mat canvas = drawing->canvas;
  return [calls, canvas]() mutable {
    canvas.setTo(cv::Scalar(14, 18, 25));
    for (const std::function<void()>& call : calls) call();
  };
}

void add_view_row(const std::string& view, cv::Size size, const Pictures& pictures) {
  auto drawing = std::make_shared<Drawing>();
  drawing->pictures = pictures;
  drawing->options.view = view;
  drawing->options.width = size.width;
  drawing->options.height = size.height;
  fit_to_screen(drawing->options, {size.width, size.height, "bench"});
  auto bare = std::make_shared<Drawing>(*drawing);
  bare->canvas = cv::Mat();
  add_row(
      "draw_dashboard, " + view, std::to_string(size.width) + "x" + std::to_string(size.height),
      [drawing] { drawing->draw(); }, bare_calls(bare));
}

}  // namespace

void add_dashboard_rows() {
  static const Pictures pictures = pictures_of(measured_frames()[1].frames);
  for (const char* view : {"rgb", "ir", "depth", "skeletal", "combo", "room_overview", "follow"}) {
    for (const cv::Size size :
         {cv::Size(800, 480), cv::Size(1440, 810), cv::Size(1920, 1080), cv::Size(3840, 2160)}) {
      add_view_row(view, size, pictures);
    }
  }
}

}  // namespace halcyra
