#include "demo/owner_samples.hpp"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/support/temporary_folder.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

std::vector<cv::Mat> pictures_in(const fs::path& folder) {
  std::vector<cv::Mat> pictures;
  for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
    pictures.push_back(cv::imread(file.path().string(), cv::IMREAD_UNCHANGED));
  }
  return pictures;
}

TEST(OwnerSamplesTest, WritesGreySquaresOfThreeStages) {
  const TemporaryFolder folder;
  write_owner_samples(folder.path() / "made" / "on the way");
  std::size_t stages = 0;
  for (const fs::directory_entry& entry :
       fs::directory_iterator(folder.path() / "made" / "on the way")) {
    ++stages;
    const std::string stage = entry.path().filename().string();
    EXPECT_TRUE(stage == "front" || stage == "left" || stage == "right") << stage;
    const std::vector<cv::Mat> pictures = pictures_in(entry.path());
    EXPECT_GE(pictures.size(), 6U) << stage;
    for (const cv::Mat& picture : pictures) {
      EXPECT_EQ(picture.type(), CV_8UC1);
      EXPECT_EQ(picture.cols, picture.rows);
      EXPECT_GE(picture.cols, 80);
    }
  }
  EXPECT_EQ(stages, 3U);
}

TEST(OwnerSamplesTest, ThrowsWhereItCannotWrite) {
  const TemporaryFolder folder;
  fs::create_directories(folder.path() / "front" / "1.png");
  EXPECT_THROW(write_owner_samples(folder.path()), std::runtime_error);
}

}  // namespace
}  // namespace halcyra
