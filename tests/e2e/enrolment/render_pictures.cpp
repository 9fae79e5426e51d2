// Renders the pictures that the tests of the enrolment record: render_enrolment_pictures FOLDER
// Some are of the owner alone, in chosen stances. The others are moments of the room's story: those
// to enrol from, and those with other noise in which people are to be recognised.
#include <iostream>
#include <string>
#include <vector>

#include <opencv2/imgcodecs.hpp>

#include "tests/enroll/rendered_owner.hpp"

namespace {

using halcyra::OwnerStance;
namespace room = halcyra::virtual_kinect::room;

struct Series {
  std::string name;
  std::vector<OwnerStance> stances;
};

const std::vector<Series>& all_series() {
  static const std::vector<Series> all = {{"front",
                                           {{0, -230, 1480, 0.50F},
                                            {-4, -140, 1450, 0.60F},
                                            {4, 30, 1570, 0.45F},
                                            {2, 110, 1500, 0.6F}}},
                                          {"left",
                                           {{-56, -110, 1500, 0.50F},
                                            {-60, -20, 1570, 0.50F},
                                            {-58, -70, 1590, 0.65F},
                                            {-64, -240, 1560, 0.55F}}},
                                          {"right",
                                           {{56, -120, 1500, 0.50F},
                                            {60, -220, 1570, 0.50F},
                                            {52, -60, 1480, 0.45F},
                                            {48, 20, 1500, 0.50F}}},
                                          {"far", {{0, -100, 3000, 0.50F}}}};
  return all;
}

// Moments of the story, as seconds since its beginning.
struct Scene {
  std::string name;
  double from;
  double to;
};

constexpr int kPicturesOfAScene = 12;

// The owner alone.
const std::vector<Scene>& enrolment_scenes() {
  static const std::vector<Scene> all = {
      {"story-front", 5.8, 8.6}, {"story-left", 9.3, 10.9}, {"story-right", 13.9, 15.5}};
  return all;
}

// One person each, later or earlier than above.
const std::vector<Scene>& recognition_scenes() {
  static const std::vector<Scene> all = {
      {"other-front", 11.6, 13.0},        {"other-left", 9.4, 10.7},
      {"other-right", 14.0, 15.3},        {"other-visitor", 35.0, 37.0},
      {"other-visitor-left", 46.7, 47.4}, {"other-guest", 23.0, 25.4}};
  return all;
}

// The part of the picture around the head: smaller pictures are searched sooner.
cv::Mat around_head(const cv::Mat& picture) { return picture(cv::Rect(480, 60, 960, 600)); }

bool write(const std::string& folder, const std::string& name, const cv::Mat& picture) {
  return cv::imwrite(folder + "/" + name + ".png", picture);
}

bool write_scenes(const std::string& folder, const room::Renderer& renderer,
                  const std::vector<Scene>& scenes) {
  bool written = true;
  for (const Scene& scene : scenes) {
    for (int i = 0; i < kPicturesOfAScene; ++i) {
      const double time = scene.from + (scene.to - scene.from) * i / kPicturesOfAScene;
      const auto set = static_cast<std::uint64_t>(time * room::kSetsPerSecond);
      cv::Mat picture;
      cv::cvtColor(renderer.render_color(room::moment_at(set), set), picture, cv::COLOR_BGRA2BGR);
      written =
          written && write(folder, scene.name + "-" + std::to_string(i), around_head(picture));
    }
  }
  return written;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: render_enrolment_pictures FOLDER\n";
    return 2;
  }
  const room::Renderer renderer(room::kUsualSeed);
  std::uint64_t set = 0;
  bool written = true;
  for (const Series& series : all_series()) {
    int number = 0;
    for (const OwnerStance& stance : series.stances) {
      const cv::Mat picture = halcyra::picture_of_owner(renderer, stance, set++);
      written = written &&
                write(argv[1], series.name + "-" + std::to_string(number++), around_head(picture));
    }
  }
  written = written && write_scenes(argv[1], renderer, enrolment_scenes());
  const room::Renderer with_other_noise(room::kUsualSeed + 13);
  written = written && write_scenes(argv[1], with_other_noise, recognition_scenes());
  return written ? 0 : 1;
}
