#include "tests/endurance/small_recording.hpp"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

const cv::Rect kPortrait(60, 10, 320, 240);
const cv::Rect kFace(175, 65, 100, 100);

cv::Mat photograph() { return cv::imread(HALCYRA_TEST_DATA "/astronaut.png"); }

cv::Mat ramp(int width, int height, double least, double most) {
  cv::Mat values(height, width, CV_16UC1);
  for (int x = 0; x < width; ++x) {
    values.col(x).setTo(cv::Scalar(least + (most - least) * x / width));
  }
  return values;
}

}  // namespace

Recording write_small_recording(const std::filesystem::path& folder) {
  Recording recording(folder);
  recording.set_device("pace: 0\n");
  const cv::Mat portrait = photograph()(kPortrait).clone();
  cv::Mat smaller;
  cv::resize(portrait, smaller, cv::Size(280, 210), 0, 0, cv::INTER_AREA);
  for (const cv::Mat& color :
       {cv::Mat(120, 160, CV_8UC3, cv::Scalar(90, 120, 60)), portrait, portrait, smaller}) {
    recording.add_color(color);
    recording.add_infrared(ramp(color.cols / 4, color.rows / 4, 100, 9000));
    recording.add_depth(ramp(color.cols / 4, color.rows / 4, 400, 9000));
  }
  recording.add_color(portrait);
  recording.add_empty_file("ir");
  recording.add_depth(cv::Mat(8, 8, CV_16UC1, cv::Scalar(0)));
  return recording;
}

void write_owner_samples(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder / "front");
  cv::imwrite((folder / "front/one.png").string(), photograph()(kFace));
}

}  // namespace halcyra
