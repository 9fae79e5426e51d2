// Renders the pictures that the tests of the enrolment record: render_enrolment_pictures FOLDER
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

// The part of the picture around the head: smaller pictures are searched sooner.
cv::Mat around_head(const cv::Mat& picture) { return picture(cv::Rect(480, 60, 960, 600)); }

bool write(const std::string& folder, const std::string& name, const cv::Mat& picture) {
  return cv::imwrite(folder + "/" + name + ".png", picture);
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
  return written ? 0 : 1;
}
