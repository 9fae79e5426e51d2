#include "app/layout_image.hpp"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "app/run_state/runtime_status.hpp"
#include "tests/support/event_messages.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/working_folder.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

using Messages = std::vector<std::string>;

constexpr const char* kPath = "captures/control-center-layout-test-1440x810.png";

Options options_of_size(int width, int height) {
  Options options;
  options.width = width;
  options.height = height;
  return options;
}

// Any two differ.
cv::Mat noise(std::uint64_t seed) {
  cv::Mat canvas(40, 60, CV_8UC3);
  cv::RNG random(seed);
  random.fill(canvas, cv::RNG::UNIFORM, 0, 256);
  return canvas;
}

TEST(WriteLayoutImage, KeepsEveryPixelUnderTheNameOfTheSize) {
  const WorkingFolder folder;
  RuntimeStatus status;
  write_layout_image(noise(1), options_of_size(1440, 810), status);
  EXPECT_TRUE(same_pixels(cv::imread(kPath, cv::IMREAD_UNCHANGED), noise(1)));
}

TEST(WriteLayoutImage, IsNamedFromTheOptionsNotFromTheCanvas) {
  const WorkingFolder folder;
  RuntimeStatus status;
  write_layout_image(noise(1), options_of_size(800, 480), status);
  EXPECT_TRUE(fs::is_regular_file("captures/control-center-layout-test-800x480.png"));
  EXPECT_EQ(std::distance(fs::directory_iterator("captures"), fs::directory_iterator()), 1);
  EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 1);
}

TEST(WriteLayoutImage, LogsThePath) {
  const WorkingFolder folder;
  RuntimeStatus status;
  write_layout_image(noise(1), options_of_size(1440, 810), status);
  EXPECT_EQ(event_messages(status), Messages{std::string("Layout test image written: ") + kPath});
}

TEST(WriteLayoutImage, UsesAFolderThatIsThereAndReplacesTheImage) {
  const WorkingFolder folder;
  fs::create_directory("captures");
  std::ofstream("captures/other") << "kept";
  RuntimeStatus status;
  write_layout_image(noise(1), options_of_size(1440, 810), status);
  write_layout_image(noise(2), options_of_size(1440, 810), status);
  EXPECT_TRUE(same_pixels(cv::imread(kPath, cv::IMREAD_UNCHANGED), noise(2)));
  EXPECT_EQ(fs::file_size("captures/other"), 4U);
}

TEST(WriteLayoutImage, GoesOnWhereTheFolderCannotBeMade) {
  const WorkingFolder folder;
  std::ofstream("captures") << "a file";
  RuntimeStatus status;
  EXPECT_NO_THROW(write_layout_image(noise(1), options_of_size(1440, 810), status));
  EXPECT_EQ(event_messages(status), Messages{std::string("Layout test image written: ") + kPath});
  EXPECT_EQ(fs::file_size("captures"), 6U);
}

TEST(WriteLayoutImage, GoesOnWhereTheFileCannotBeWritten) {
  const WorkingFolder folder;
  fs::create_directories(kPath);
  RuntimeStatus status;
  EXPECT_NO_THROW(write_layout_image(noise(1), options_of_size(1440, 810), status));
  EXPECT_EQ(event_messages(status), Messages{std::string("Layout test image written: ") + kPath});
  EXPECT_TRUE(fs::is_directory(kPath));
}

}  // namespace
}  // namespace halcyra
