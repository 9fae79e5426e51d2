#include <filesystem>

#include <opencv2/face.hpp>
#include <opencv2/imgcodecs.hpp>

#include "bench/enrolled_owner.hpp"
#include "bench/measurement.hpp"
#include "face_pipeline/sample_loader.hpp"

namespace halcyra {
namespace {

std::vector<cv::Mat> read_pictures(const std::filesystem::path& folder) {
  std::vector<cv::Mat> pictures;
  for (const auto& entry : std::filesystem::directory_iterator(folder / "front")) {
    pictures.push_back(cv::imread(entry.path().string(), cv::IMREAD_GRAYSCALE));
  }
  return pictures;
}

void train(const std::vector<cv::Mat>& pictures) {
  cv::face::LBPHFaceRecognizer::create(1, 8, 8, 8)
      ->train(pictures, std::vector<int>(pictures.size(), 1));
}

}  // namespace

void add_owner_samples_rows() {
  for (const int count : {10, 100, 1000}) {
    const std::filesystem::path folder = samples_folder(count);
    const std::string scene = std::to_string(count) + " samples";
    add_row(
        "load_samples", scene,
        [=] {
          std::vector<TrainingSample> samples;
          load_samples(folder.string(), samples);
        },
        [=] { read_pictures(folder); });
    std::vector<TrainingSample> samples;
    load_samples(folder.string(), samples);
    std::vector<cv::Mat> pictures;
    for (const TrainingSample& sample : samples) pictures.push_back(sample.image);
    add_row(
        "load and train", scene, [=] { enrolled_owner(count); },
        [=] {
          read_pictures(folder);
          train(pictures);
        });
  }
}

}  // namespace halcyra
