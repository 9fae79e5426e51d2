#include "app/layout_image.hpp"

#include <filesystem>
#include <string>
#include <system_error>

#include <opencv2/imgcodecs.hpp>

#include "app/run_state/event_log.hpp"
#include "app/run_state/runtime_status.hpp"

namespace halcyra {

void write_layout_image(const cv::Mat& canvas, const Options& options, RuntimeStatus& status) {
  std::error_code ignored;
  std::filesystem::create_directories("captures", ignored);
  const std::string path = "captures/control-center-layout-test-" + std::to_string(options.width) +
                           "x" + std::to_string(options.height) + ".png";
  cv::imwrite(path, canvas);
  add_event(status, "Layout test image written: " + path);
}

}  // namespace halcyra
