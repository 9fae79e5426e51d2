#include "tests/golden/golden_comparison.hpp"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/golden/golden_pictures.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {
namespace {

class GoldenComparison : public ::testing::Test {
 protected:
  GoldenComparison() : picture_(draw(golden_pictures().front())) {
    cv::imwrite(golden_.string(), picture_);
  }

  bool succeeds() const {
    return static_cast<bool>(equals_golden_picture(picture_, golden_, reports_));
  }

  const TemporaryFolder folder_;
  const std::filesystem::path golden_ = folder_.path() / "dashboard.png";
  const std::filesystem::path reports_ = folder_.path() / "reports" / "of-a-run";
  cv::Mat picture_;
};

TEST_F(GoldenComparison, AcceptsTheSamePicture) {
  EXPECT_TRUE(succeeds());
  EXPECT_FALSE(std::filesystem::exists(reports_));
}

TEST_F(GoldenComparison, SeesOneChannelOfOnePixelChangedByOne) {
  uchar& channel = picture_.at<cv::Vec3b>(479, 799)[1];
  channel = static_cast<uchar>(channel + 1);
  EXPECT_FALSE(succeeds());
}

TEST_F(GoldenComparison, WritesThePictureAndAMapOfTheDifference) {
  picture_.at<cv::Vec3b>(20, 30) = cv::Vec3b(1, 2, 3);
  EXPECT_FALSE(succeeds());

  const cv::Mat actual = cv::imread((reports_ / "dashboard-actual.png").string());
  EXPECT_EQ(cv::norm(actual, picture_, cv::NORM_INF), 0);
  const cv::Mat map =
      cv::imread((reports_ / "dashboard-difference.png").string(), cv::IMREAD_UNCHANGED);
  ASSERT_EQ(map.size(), picture_.size());
  EXPECT_EQ(cv::countNonZero(map), 1);
  EXPECT_EQ(map.at<uchar>(20, 30), 255);
}

TEST_F(GoldenComparison, SeesAnotherSize) {
  picture_ = picture_.rowRange(0, 470).clone();
  EXPECT_FALSE(succeeds());
  EXPECT_TRUE(std::filesystem::exists(reports_ / "dashboard-actual.png"));
}

TEST_F(GoldenComparison, SeesAMissingGoldenPicture) {
  std::filesystem::remove(golden_);
  EXPECT_FALSE(succeeds());
}

}  // namespace
}  // namespace halcyra
