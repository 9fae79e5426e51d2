#include "face_pipeline/sample_loader.hpp"

#include <algorithm>
#include <filesystem>
#include <locale>
#include <system_error>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

namespace fs = std::filesystem;

const cv::Size kSampleSize(160, 160);

std::string lower_extension(const fs::path& path) {
  std::string extension = path.extension().string();
  for (char& c : extension) c = std::tolower(c, std::locale::classic());
  return extension;
}

// A dangling or circular link is not a file.
bool is_sample_file(const fs::directory_entry& entry) {
  std::error_code ignored;
  if (!entry.is_regular_file(ignored) || entry.path().filename() == "manifest.json") return false;
  const std::string extension = lower_extension(entry.path());
  return extension == ".png" || extension == ".jpg" || extension == ".jpeg" || extension == ".pgm";
}

}  // namespace

// In path order, so that two runs over the same tree see the same samples.
std::vector<fs::path> sample_files(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (is_sample_file(entry)) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

cv::Mat read_sample(const fs::path& file) {
  return cv::imread(file.string(), cv::IMREAD_GRAYSCALE);
}

std::string stage_of(const fs::path& relative) {
  const bool nested = relative.has_parent_path() && relative.parent_path() != ".";
  return nested ? relative.parent_path().filename().string() : "flat";
}

TrainingSample make_sample(const cv::Mat& picture, const fs::path& relative) {
  TrainingSample sample;
  sample.image = picture;
  if (picture.size() != kSampleSize) {
    cv::resize(picture, sample.image, kSampleSize, 0, 0, cv::INTER_AREA);
  }
  sample.path = relative.generic_string();
  sample.stage = stage_of(relative);
  return sample;
}

bool load_samples(const std::string& folder, std::vector<TrainingSample>& samples) {
  std::error_code ignored;
  if (!fs::exists(folder, ignored)) return false;
  for (const fs::path& file : sample_files(folder)) {
    const cv::Mat picture = read_sample(file);
    if (!picture.empty()) samples.push_back(make_sample(picture, fs::relative(file, folder)));
  }
  return !samples.empty();
}

}  // namespace halcyra
