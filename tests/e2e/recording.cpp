#include "tests/e2e/recording.hpp"

#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <opencv2/imgcodecs.hpp>

#include "tests/support/text_file.hpp"

namespace halcyra {

Recording::Recording(std::filesystem::path folder) : folder_(std::move(folder)) {
  std::filesystem::create_directories(folder_);
}

void Recording::set_device(const std::string& settings) {
  write_text(folder_ / "device.yml", "%YAML:1.0\n" + settings);
}

void Recording::add_empty_file(const std::string& stream) {
  write_text(next_file(stream, ".png"), "");
}

void Recording::add(const std::string& stream, const cv::Mat& picture) {
  const bool is_float = picture.depth() == CV_32F;
  const std::filesystem::path file = next_file(stream, is_float ? ".tiff" : ".png");
  std::filesystem::create_directories(file.parent_path());
  if (!cv::imwrite(file.string(), picture)) {
    throw std::runtime_error("cannot write " + file.string());
  }
}

std::filesystem::path Recording::next_file(const std::string& stream,
                                           const std::string& extension) const {
  const std::filesystem::path stream_folder = folder_ / stream;
  std::ptrdiff_t count = 0;
  if (std::filesystem::exists(stream_folder)) {
    count = std::distance(std::filesystem::directory_iterator(stream_folder), {});
  }
  char name[16];
  std::snprintf(name, sizeof(name), "%06d", static_cast<int>(count));
  return stream_folder / (name + extension);
}

}  // namespace halcyra
