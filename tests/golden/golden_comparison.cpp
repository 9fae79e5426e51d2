#include "tests/golden/golden_comparison.hpp"

#include <opencv2/imgcodecs.hpp>

#include "tests/support/same_pixels.hpp"

namespace halcyra {

::testing::AssertionResult equals_golden_picture(const cv::Mat& actual,
                                                 const std::filesystem::path& golden,
                                                 const std::filesystem::path& report_folder) {
  const cv::Mat expected = cv::imread(golden.string(), cv::IMREAD_UNCHANGED);
  ::testing::AssertionResult result = same_pixels(actual, expected);
  if (result) return result;
  std::filesystem::create_directories(report_folder);
  const std::filesystem::path shown = report_folder / (golden.stem().string() + "-actual.png");
  cv::imwrite(shown.string(), actual);
  result << "\n  expected: " << golden << "\n  actual: " << shown;
  if (actual.size() == expected.size() && actual.type() == expected.type()) {
    const std::filesystem::path map = report_folder / (golden.stem().string() + "-difference.png");
    cv::imwrite(map.string(), differing_pixels(actual, expected));
    result << "\n  difference: " << map;
  }
  return result;
}

}  // namespace halcyra
