// The whole dashboard with arbitrary contents.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "dashboard/draw_dashboard.hpp"
#include "dashboard/font_scale.hpp"
#include "face_pipeline/face_info.hpp"
#include "tests/fuzz/requirement.hpp"

namespace halcyra {
namespace {

// Boxes come from pictures, and no picture reaches as far as this. Beyond it the sums of a box
// would no longer be ints.
constexpr int kFarthest = 20000;

struct Scene {
  cv::Mat color;
  cv::Mat infrared;
  cv::Mat depth;
  RuntimeStatus status;
  Options options;
  std::vector<FaceInfo> faces;
};

std::string text_from(FuzzedDataProvider& input) { return input.ConsumeRandomLengthString(200); }

// Most canvases are of the smallest size, which is drawn fastest.
int side_from(FuzzedDataProvider& input) {
  if (input.ConsumeIntegralInRange(0, 63) > 0) return input.ConsumeIntegralInRange(-100, 900);
  return input.ConsumeIntegralInRange(0, 4400);
}

Options options_from(FuzzedDataProvider& input) {
  static const std::vector<const char*> kViews = {
      "rgb", "ir", "depth", "skeletal", "combo", "room_overview", "follow", ""};
  Options options;
  options.width = side_from(input);
  options.height = side_from(input);
  options.view = kViews[input.ConsumeIntegralInRange<std::size_t>(0, kViews.size() - 1)];
  options.face_boxes = input.ConsumeBool();
  options.debug = input.ConsumeBool();
  options.mic_hud = input.ConsumeBool();
  return options;
}

cv::Mat picture_from(FuzzedDataProvider& input) {
  const int width = input.ConsumeIntegralInRange(0, 33);
  const int height = input.ConsumeIntegralInRange(0, 33);
  if (width == 0 || height == 0) return {};
  return {height, width, CV_8UC3, cv::Scalar::all(input.ConsumeIntegral<std::uint8_t>())};
}

FaceInfo face_from(FuzzedDataProvider& input) {
  FaceInfo face;
  const int limit = input.ConsumeBool() ? 40 : kFarthest;
  face.box.x = input.ConsumeIntegralInRange(-limit, limit);
  face.box.y = input.ConsumeIntegralInRange(-limit, limit);
  face.box.width = input.ConsumeIntegralInRange(-limit, limit);
  face.box.height = input.ConsumeIntegralInRange(-limit, limit);
  face.person_id = input.ConsumeIntegral<int>();
  face.label = text_from(input);
  face.detector_type = text_from(input);
  face.quality = text_from(input);
  return face;
}

std::vector<FaceInfo> faces_from(FuzzedDataProvider& input) {
  std::vector<FaceInfo> faces(input.ConsumeIntegralInRange<std::size_t>(0, 4));
  for (FaceInfo& face : faces) face = face_from(input);
  return faces;
}

void fill_room(RoomAwareness& room, FuzzedDataProvider& input) {
  for (std::int32_t* count : {&room.people, &room.faces, &room.skeletons, &room.unknown_people}) {
    *count = input.ConsumeIntegral<std::int32_t>();
  }
  for (std::string* text :
       {&room.target, &room.view_mode, &room.fallback, &room.reason, &room.voice_match}) {
    *text = text_from(input);
  }
  room.owner_visible = input.ConsumeBool();
}

void fill_services(RuntimeStatus& status, FuzzedDataProvider& input) {
  VoiceStatus& voice = status.voice;
  for (std::string* text :
       {&voice.live_processing, &voice.default_source, &voice.mic_presence,
        &voice.systemd_user_active, &voice.direction_angle, &voice.direction_confidence,
        &status.corvane.user_state, &status.corvane.system_state, &status.corvane.mic_routing,
        &status.corvane.warning}) {
    *text = text_from(input);
  }
  voice.direction_low_confidence = input.ConsumeBool();
}

RuntimeStatus status_from(FuzzedDataProvider& input) {
  RuntimeStatus status;
  for (bool* flag : {&status.kinect_connected, &status.rgb_ok, &status.skeleton_available,
                     &status.depth_ok, &status.ir_ok}) {
    *flag = input.ConsumeBool();
  }
  for (std::string* text : {&status.kinect_message, &status.skeleton_message, &status.depth_message,
                            &status.ir_message}) {
    *text = text_from(input);
  }
  fill_room(status.room, input);
  fill_services(status, input);
  status.events.resize(input.ConsumeIntegralInRange<std::size_t>(0, 11));
  for (std::string& event : status.events) event = text_from(input);
  return status;
}

cv::Mat drawn(const Scene& scene, cv::Mat canvas) {
  draw_dashboard(canvas, scene.color, scene.infrared, scene.depth, scene.status, scene.options,
                 scene.faces);
  return canvas;
}

void check(const Scene& scene, bool twice) {
  const cv::Mat canvas = drawn(scene, {});
  require(canvas.type() == CV_8UC3, "the canvas is 8-bit BGR");
  require(canvas.cols == std::max(800, scene.options.width), "the canvas has its width");
  require(canvas.rows == std::max(480, scene.options.height), "the canvas has its height");
  if (!twice) return;
  const cv::Mat again = drawn(scene, cv::Mat(canvas.size(), CV_8UC3, cv::Scalar(1, 2, 3)));
  require(std::memcmp(canvas.data, again.data, canvas.total() * canvas.elemSize()) == 0,
          "the same contents give the same picture");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  FuzzedDataProvider input(data, size);
  g_font_scale = input.ConsumeFloatingPointInRange(0.7, 2.4);
  Scene scene;
  scene.options = options_from(input);
  scene.color = picture_from(input);
  scene.infrared = picture_from(input);
  scene.depth = picture_from(input);
  const bool twice = input.ConsumeIntegralInRange(0, 7) == 0;
  scene.faces = faces_from(input);
  scene.status = status_from(input);
  check(scene, twice);
  return 0;
}
