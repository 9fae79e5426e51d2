// What the driver makes of a known scene, pixel by pixel.
#include <array>
#include <fstream>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/real_driver/usb_sensor_run.hpp"

namespace halcyra {
namespace {

constexpr int kWidthOfDepth = 512;
constexpr int kHeightOfDepth = 424;

// Of a picture, against what it should be.
struct Deviation {
  double mean;
  double most;
};

Deviation deviation(const cv::Mat& picture, const cv::Mat& expected, const cv::Rect& part) {
  cv::Mat difference;
  cv::absdiff(picture(part), expected(part), difference);
  double most = 0;
  cv::minMaxLoc(difference, nullptr, &most);
  return {cv::mean(difference)[0], most};
}

// The driver computes no value for the outermost columns.
cv::Rect inner_columns() { return {1, 0, kWidthOfDepth - 2, kHeightOfDepth}; }

class UsbPixels : public UsbSensorRun {
 protected:
  // The sensor sees a picture of 16-bit values as "DEPTH" or "IR".
  void see(const std::string& stream, const cv::Mat& picture) {
    const std::filesystem::path file = stage_.folder() / (stream + ".pgm");
    ASSERT_TRUE(cv::imwrite(file.string(), picture));
    set_sensor(stream, file.string());
  }
};

TEST_F(UsbPixels, ColourIsThatOfTheJpeg) {
  record_sets(1);
  const cv::Mat seen = cv::imread((stage_.folder() / "seen/100.jpg").string());
  const cv::Mat color = recorded("color");
  ASSERT_EQ(color.size(), cv::Size(1920, 1080));
  const Deviation off =
      deviation(color.reshape(1), seen.reshape(1), {0, 0, color.cols * 3, color.rows});
  EXPECT_LT(off.mean, 0.5);
  EXPECT_LE(off.most, 8);
}

TEST_F(UsbPixels, DepthOfASlopingPlane) {
  set_sensor("DEPTH_MM", "1800");
  set_sensor("DEPTH_SLOPE", "900");
  record_sets(1);
  cv::Mat expected(kHeightOfDepth, kWidthOfDepth, CV_32FC1);
  for (int x = 0; x < expected.cols; ++x) {
    expected.col(x) = 1800 + 900 * ((x + 0.5) / expected.cols - 0.5);
  }
  const Deviation off = deviation(recorded("depth"), expected, inner_columns());
  EXPECT_LT(off.mean, 0.5);
  EXPECT_LT(off.most, 4);
}

TEST_F(UsbPixels, InfraredOfAGradient) {
  set_sensor("IR_LEVEL", "8000");
  record_sets(1);
  cv::Mat expected(kHeightOfDepth, kWidthOfDepth, CV_32FC1);
  for (int y = 0; y < expected.rows; ++y) {
    expected.row(y) = 8000 * (0.5 + 0.5 * (y + 0.5) / expected.rows);
  }
  const Deviation off = deviation(recorded("ir"), expected, inner_columns());
  EXPECT_LT(off.mean, 40);
  EXPECT_LT(off.most, 160);
}

// Four walls, and what surrounds their edges left out: the driver smoothes it.
TEST_F(UsbPixels, WallsKeepTheirPlacesAndDistances) {
  const std::array<int, 4> walls = {700, 1500, 3000, 4300};
  cv::Mat seen(kHeightOfDepth, kWidthOfDepth, CV_16UC1);
  const auto quarter = [](int number) {
    const cv::Size size(kWidthOfDepth / 2, kHeightOfDepth / 2);
    return cv::Rect({number % 2 * size.width, number / 2 * size.height}, size);
  };
  for (int i = 0; i < 4; ++i) seen(quarter(i)) = walls[static_cast<std::size_t>(i)];
  see("DEPTH", seen);
  record_sets(1);
  cv::Mat expected;
  seen.convertTo(expected, CV_32F);
  for (int i = 0; i < 4; ++i) {
    SCOPED_TRACE(walls[static_cast<std::size_t>(i)]);
    const cv::Rect inside = quarter(i) + cv::Point(10, 10) - cv::Size(20, 20);
    const Deviation off = deviation(recorded("depth"), expected, inside);
    EXPECT_LT(off.mean, 1);
    EXPECT_LT(off.most, 8);
  }
}

TEST_F(UsbPixels, WithoutDistanceAreZero) {
  see("DEPTH", cv::Mat::zeros(kHeightOfDepth, kWidthOfDepth, CV_16UC1));
  record_sets(1);
  EXPECT_EQ(cv::countNonZero(recorded("depth")), 0);
  EXPECT_GT(cv::countNonZero(recorded("ir")), 200000);
}

TEST_F(UsbPixels, BeyondTheDriversRangeAreZero) {
  for (const char* distance : {"400", "5000"}) {
    SCOPED_TRACE(distance);
    set_sensor("DEPTH_MM", distance);
    set_sensor("DEPTH_SLOPE", "0");
    record_sets(1);
    EXPECT_EQ(cv::countNonZero(recorded("depth")), 0);
  }
}

}  // namespace
}  // namespace halcyra
