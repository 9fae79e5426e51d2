// Writes small recordings whose pixels tell which set they belong to.
#pragma once

#include <filesystem>
#include <iomanip>
#include <sstream>
#include <string>

#include <opencv2/core/mat.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/support/text_file.hpp"

namespace halcyra::virtual_kinect {

inline void write_image(const std::filesystem::path& file, const cv::Mat& image) {
  std::filesystem::create_directories(file.parent_path());
  cv::imwrite(file.string(), image);
}

inline std::string numbered(int set) {
  std::ostringstream name;
  name << std::setw(3) << std::setfill('0') << set << ".png";
  return name.str();
}

// Set k: blue k, green 100 + k and red 200, infrared 1000 + k, depth 2000 + k, everywhere.
inline void write_color(const std::filesystem::path& recording, int set) {
  write_image(recording / "color" / numbered(set),
              cv::Mat(3, 4, CV_8UC3, cv::Scalar(set, 100 + set, 200)));
}

inline void write_ir(const std::filesystem::path& recording, int set) {
  write_image(recording / "ir" / numbered(set), cv::Mat(2, 5, CV_16UC1, cv::Scalar(1000 + set)));
}

inline void write_depth(const std::filesystem::path& recording, int set) {
  write_image(recording / "depth" / numbered(set), cv::Mat(2, 5, CV_16UC1, cv::Scalar(2000 + set)));
}

inline void write_recording(const std::filesystem::path& recording, int sets) {
  for (int set = 0; set < sets; ++set) {
    write_color(recording, set);
    write_ir(recording, set);
    write_depth(recording, set);
  }
}

inline void write_device_yml(const std::filesystem::path& recording, const std::string& entries) {
  write_text(recording / "device.yml", "%YAML:1.0\n---\n" + entries);
}

}  // namespace halcyra::virtual_kinect
