#include "enroll/present_samples.hpp"

#include <opencv2/core/base.hpp>

#include "face_pipeline/sample_loader.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// Empty for a file that cannot be decoded, also for one that OpenCV finds too large.
cv::Mat picture_in(const fs::path& file) {
  try {
    return read_sample(file);
  } catch (const cv::Exception&) {
    return {};
  }
}

}  // namespace

bool load_present_samples(const fs::path& folder, SampleDistances& samples,
                          std::vector<std::string>& names, std::string& complaint) {
  std::vector<fs::path> files;
  try {
    files = sample_files(folder);
  } catch (const fs::filesystem_error& error) {
    complaint =
        "The samples in " + folder.string() + " cannot be read: " + error.code().message() + ".";
    return false;
  }
  for (const fs::path& file : files) {
    const cv::Mat picture = picture_in(file);
    if (picture.empty()) continue;
    samples.add(picture);
    names.push_back(file.lexically_relative(folder).generic_string());
  }
  return true;
}

}  // namespace halcyra
