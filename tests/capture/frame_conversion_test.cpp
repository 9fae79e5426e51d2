#include "capture/frame_conversion.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

ColorImages converted(const cv::Mat& pixels, ChannelOrder order) {
  ColorImages images;
  color_images(pixels, order, images);
  return images;
}

TEST(ColorImages, ReadsEitherChannelOrder) {
  const cv::Mat bgrx(1, 1, CV_8UC4, cv::Scalar(10, 100, 200, 77));
  const cv::Mat rgbx(1, 1, CV_8UC4, cv::Scalar(200, 100, 10, 77));
  for (const ColorImages& images :
       {converted(bgrx, ChannelOrder::kBgrx), converted(rgbx, ChannelOrder::kRgbx)}) {
    EXPECT_EQ(images.bgr.at<cv::Vec3b>(0, 0), cv::Vec3b(10, 100, 200));
    // 0.114 x 10 + 0.587 x 100 + 0.299 x 200 = 119.64
    EXPECT_EQ(images.grey.at<std::uint8_t>(0, 0), 120);
  }
}

TEST(ColorImages, ConvertsWholePicturesBothTimesFromTheFourChannels) {
  cv::Mat pixels(13, 17, CV_8UC4);
  cv::randu(pixels, 0, 256);
  cv::Mat bgr;
  cv::Mat grey;
  cv::cvtColor(pixels, bgr, cv::COLOR_BGRA2BGR);
  cv::cvtColor(pixels, grey, cv::COLOR_BGRA2GRAY);
  const ColorImages bgrx = converted(pixels, ChannelOrder::kBgrx);
  EXPECT_TRUE(same_pixels(bgrx.bgr, bgr));
  EXPECT_TRUE(same_pixels(bgrx.grey, grey));

  cv::cvtColor(pixels, bgr, cv::COLOR_RGBA2BGR);
  cv::cvtColor(pixels, grey, cv::COLOR_RGBA2GRAY);
  const ColorImages rgbx = converted(pixels, ChannelOrder::kRgbx);
  EXPECT_TRUE(same_pixels(rgbx.bgr, bgr));
  EXPECT_TRUE(same_pixels(rgbx.grey, grey));
}

TEST(ColorImages, TakeTheMemoryOfThoseBefore) {
  cv::Mat pixels(13, 17, CV_8UC4);
  cv::randu(pixels, 0, 256);
  ColorImages images = converted(cv::Mat::zeros(13, 17, CV_8UC4), ChannelOrder::kBgrx);
  const uchar* const bgr = images.bgr.data;
  const uchar* const grey = images.grey.data;
  color_images(pixels, ChannelOrder::kBgrx, images);
  EXPECT_EQ(images.bgr.data, bgr);
  EXPECT_EQ(images.grey.data, grey);
  const ColorImages expected = converted(pixels, ChannelOrder::kBgrx);
  EXPECT_TRUE(same_pixels(images.bgr, expected.bgr));
  EXPECT_TRUE(same_pixels(images.grey, expected.grey));
  color_images(pixels.rowRange(2, 9), ChannelOrder::kBgrx, images);
  EXPECT_TRUE(same_pixels(images.bgr, expected.bgr.rowRange(2, 9)));
  EXPECT_TRUE(same_pixels(images.grey, expected.grey.rowRange(2, 9)));
}

TEST(ColorImages, OwnTheirPixels) {
  cv::Mat pixels(2, 2, CV_8UC4, cv::Scalar(1, 2, 3, 4));
  const ColorImages images = converted(pixels, ChannelOrder::kBgrx);
  pixels.setTo(cv::Scalar::all(200));
  EXPECT_EQ(images.bgr.at<cv::Vec3b>(1, 1), cv::Vec3b(1, 2, 3));
}

}  // namespace
}  // namespace halcyra
