// A samples folder of a test's own.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "app/run_state/options.hpp"
#include "enroll/sample_report.hpp"
#include "tests/support/photograph.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {

// The photographed face, cut out that many pixels to the right of where it is.
inline cv::Mat shifted_face(int shift) {
  return photograph()(photographed_face() + cv::Point(shift, 0)).clone();
}

class SampleSet {
 public:
  SampleSet() { options.samples_dir = (folder_.path() / "samples").string(); }

  // The file's place; its folder is there afterwards.
  std::filesystem::path place(const std::string& name) const {
    const std::filesystem::path file = std::filesystem::path(options.samples_dir) / name;
    std::filesystem::create_directories(file.parent_path());
    return file;
  }
  void add(const std::string& name, const cv::Mat& picture) const {
    if (!cv::imwrite(place(name).string(), picture)) {
      throw std::runtime_error("cannot write " + name);
    }
  }
  void add_bytes(const std::string& name, const std::string& bytes) const {
    std::ofstream(place(name), std::ios::binary) << bytes;
  }
  SampleReport report(int per_pose = 1) const { return report_on_samples(options, per_pose); }

  // For what must not be among the samples.
  const std::filesystem::path& outside() const { return folder_.path(); }

  Options options;

 private:
  TemporaryFolder folder_;
};

// A file that claims more pixels than OpenCV reads.
inline std::string huge_header() { return "P5 100000 100000 255\n"; }

}  // namespace halcyra
