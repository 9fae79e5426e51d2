#include "demo/owner_samples.hpp"

#include <stdexcept>
#include <string>
#include <vector>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/renderer.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

namespace room = virtual_kinect::room;

// One picture: where the owner stands, how he holds his head, the light, and what the picture shows
// of him. Angles in degrees, lengths in millimetres.
struct Shot {
  float x;
  float z;
  float head_yaw;
  float head_pitch;
  float head_roll;
  float daylight;
  float lamp;
  float frame_side;   // of the square around the face, measured at the distance of the head
  float frame_shift;  // from the middle of the head to that of the square, to the right
  float frame_rise;   // and upwards
};

struct Stage {
  const char* name;
  std::vector<Shot> shots;
};

const std::vector<Stage>& stages() {
  static const std::vector<Stage> all = {
      {"front",
       {{-230, 1480, 0, 0, 0, 0.95F, 0.50F, 190, -6, 0},
        {-140, 1450, -4, 1, 1, 1.05F, 0.60F, 186, -8, 2},
        {30, 1570, 4, -1, -1, 0.92F, 0.45F, 192, -3, 0},
        {60, 1460, 5, 1, 0, 1.0F, 0.40F, 190, 0, -2},
        {-200, 1580, -5, 0, 1, 1.06F, 0.50F, 190, -11, 0},
        {-20, 1500, 2, 2, -1, 0.96F, 0.60F, 196, -5, 3},
        {-120, 1490, -2, -2, 0, 1.0F, 0.62F, 193, -7, 1},
        {-40, 1590, 1, 1, 2, 1.04F, 0.55F, 194, -4, -2}}},
      {"left",
       {{-110, 1500, -56, 0, 0, 0.95F, 0.50F, 196, -30, 33},
        {-20, 1570, -60, 1, 1, 1.05F, 0.60F, 194, -30, 34},
        {-160, 1480, -52, -1, 0, 1.0F, 0.45F, 204, -22, 24},
        {-240, 1560, -64, 0, -1, 0.92F, 0.55F, 194, -31, 34},
        {60, 1500, -57, 1, 0, 1.04F, 0.50F, 198, -30, 32},
        {-70, 1590, -58, -1, 1, 0.97F, 0.65F, 200, -30, 30},
        {20, 1450, -57, 0, 0, 1.0F, 0.50F, 258, -32, 4},
        {-190, 1510, -61, 0, 0, 1.0F, 0.60F, 196, -31, 32}}},
      {"right",
       {{-120, 1500, 56, 0, 0, 0.95F, 0.50F, 222, 26, 4},
        {-220, 1570, 60, 1, 1, 1.05F, 0.60F, 226, 28, 2},
        {-60, 1480, 52, -1, 0, 1.0F, 0.45F, 220, 24, 6},
        {-300, 1560, 64, 0, -1, 0.92F, 0.55F, 228, 28, 3},
        {20, 1500, 48, 1, 0, 1.04F, 0.50F, 222, 22, 4},
        {-160, 1590, 58, -1, 1, 0.97F, 0.65F, 230, 26, 6},
        {-260, 1450, 54, 0, 0, 1.0F, 0.50F, 216, 26, 3},
        {-80, 1510, 44, 0, 0, 1.0F, 0.60F, 220, 20, 4}}},
  };
  return all;
}

room::Posture posture_for(const Shot& shot) {
  room::Posture posture;
  posture.x = shot.x;
  posture.z = shot.z;
  posture.body_yaw = 0.3F * shot.head_yaw;
  posture.head_yaw = shot.head_yaw;
  posture.head_pitch = shot.head_pitch;
  posture.head_roll = shot.head_roll;
  return posture;
}

cv::Rect frame_of(const Shot& shot) {
  const float scale = room::kColorCamera.focal / shot.z;
  const float head_height =
      room::head_position(room::look_of(room::Person::kOwner).body, posture_for(shot)).y;
  const float side = shot.frame_side * scale;
  const float left =
      room::kColorCamera.column({shot.x + shot.frame_shift, 0.0F, shot.z}) - 0.5F * side;
  const float top =
      room::kColorCamera.row({0.0F, head_height - shot.frame_rise, shot.z}) - 0.5F * side;
  return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(side),
          static_cast<int>(side)};
}

cv::Mat take(const room::Renderer& renderer, const Shot& shot, std::uint64_t number) {
  room::Moment moment;
  moment.people = {{room::Person::kOwner, posture_for(shot)}};
  moment.light = {shot.daylight, shot.lamp};
  cv::Mat grey;
  cv::cvtColor(renderer.render_color(moment, number), grey, cv::COLOR_BGRA2GRAY);
  cv::Mat face;
  cv::equalizeHist(grey(frame_of(shot)), face);  // as faces are before they are compared
  return face;
}

}  // namespace

void write_owner_samples(const fs::path& folder) {
  const room::Renderer renderer(room::kUsualSeed + 1);
  std::uint64_t number = 0;
  for (const Stage& stage : stages()) {
    const fs::path stage_folder = folder / stage.name;
    fs::create_directories(stage_folder);
    int picture = 1;
    for (const Shot& shot : stage.shots) {
      const fs::path file = stage_folder / (std::to_string(picture++) + ".png");
      if (!cv::imwrite(file.string(), take(renderer, shot, number++))) {
        throw std::runtime_error("cannot write " + file.string());
      }
    }
  }
}

}  // namespace halcyra
