// Writes recordings for the virtual Kinect.
#pragma once

#include <filesystem>
#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

class Recording {
 public:
  explicit Recording(std::filesystem::path folder);

  const std::filesystem::path& folder() const { return folder_; }

  // The lines of device.yml.
  void set_device(const std::string& settings);

  // Adds the next frame of "color", "ir" or "depth": a TIFF file for a 32-bit float picture, a PNG
  // file for any other, both lossless.
  void add(const std::string& stream, const cv::Mat& picture);
  void add_color(const cv::Mat& picture) { add("color", picture); }
  void add_infrared(const cv::Mat& picture) { add("ir", picture); }
  void add_depth(const cv::Mat& picture) { add("depth", picture); }

  // Adds a frame that cannot be decoded.
  void add_empty_file(const std::string& stream);

 private:
  std::filesystem::path next_file(const std::string& stream, const std::string& extension) const;

  std::filesystem::path folder_;
};

}  // namespace halcyra
