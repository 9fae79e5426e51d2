#include "record/frame_file.hpp"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "tests/record/recorded_sets.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"
#include "virtual_kinect/image_file.hpp"

namespace halcyra::record {
namespace {

using libfreenect2::Frame;
using virtual_kinect::StreamImage;

RecordedFrame frame_of(const cv::Mat& pixels, PixelLayout layout) {
  RecordedFrame frame;
  frame.pixels = pixels;
  frame.layout = layout;
  return frame;
}

FrameFile file_of(const cv::Mat& pixels, PixelLayout layout, Stream stream,
                  const RecordOptions& options = with_png()) {
  FrameFile file;
  encode_frame(frame_of(pixels, layout), stream, options, file);
  return file;
}

// What the virtual Kinect delivers for the file.
StreamImage played(const FrameFile& file, Frame::Type stream,
                   Frame::Format color_format = Frame::BGRX) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.path() / ("000001" + file.extension);
  write_text(path, std::string(file.bytes.begin(), file.bytes.end()));
  return virtual_kinect::read_image(path, stream, color_format);
}

FrameFile value_file(const cv::Mat& values) { return file_of(values, PixelLayout::kFloat, kDepth); }

TEST(FrameFile, WholeNumbersOf16BitsBecomePng) {
  cv::Mat values(256, 256, CV_32FC1);
  for (int i = 0; i < 65'536; ++i) values.at<float>(i / 256, i % 256) = static_cast<float>(i);
  const FrameFile file = value_file(values);
  EXPECT_EQ(file.extension, ".png");
  EXPECT_TRUE(same_bits(played(file, Frame::Depth).pixels, values));
  EXPECT_TRUE(same_bits(played(file, Frame::Ir).pixels, values));
}

TEST(FrameFile, OneOtherValueMakesItTiff) {
  using Limits = std::numeric_limits<float>;
  for (const float value : {-0.0F, 0.5F, -1.0F, 65'536.0F, 4499.9995F, 1e30F, Limits::quiet_NaN(),
                            -Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                            Limits::denorm_min(), Limits::max(), Limits::lowest()}) {
    cv::Mat values(424, 512, CV_32FC1, cv::Scalar(1234));
    values.at<float>(423, 511) = value;
    const FrameFile file = value_file(values);
    EXPECT_EQ(file.extension, ".tiff") << value;
    EXPECT_TRUE(same_bits(played(file, Frame::Depth).pixels, values)) << value;
  }
}

TEST(FrameFile, TiffKeepsAnyBits) {
  std::mt19937 random(1);
  for (const cv::Size size :
       {cv::Size(512, 424), cv::Size(1, 1), cv::Size(7, 3), cv::Size(1, 900), cv::Size(3001, 2)}) {
    cv::Mat values(size, CV_32FC1);
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x)
        values.ptr<std::uint32_t>(y)[x] = static_cast<std::uint32_t>(random());
    }
    EXPECT_TRUE(same_bits(played(value_file(values), Frame::Ir).pixels, values)) << size;
  }
}

cv::Mat color_pixels() {
  cv::Mat pixels(90, 70, CV_8UC4);
  cv::randu(pixels, 0, 256);
  return pixels;
}

// As the sensor delivers them, with a fourth channel of 255.
cv::Mat filled(const cv::Mat& pixels) {
  cv::Mat result = pixels.clone();
  for (int y = 0; y < result.rows; ++y) {
    for (int x = 0; x < result.cols; ++x) result.at<cv::Vec4b>(y, x)[3] = 255;
  }
  return result;
}

TEST(FrameFile, ColorComesBackInItsOwnOrder) {
  const cv::Mat pixels = color_pixels();
  const FrameFile bgrx = file_of(pixels, PixelLayout::kBgrx, kColor);
  EXPECT_EQ(bgrx.extension, ".png");
  EXPECT_TRUE(same_bits(played(bgrx, Frame::Color, Frame::BGRX).pixels, filled(pixels)));
  const FrameFile rgbx = file_of(pixels, PixelLayout::kRgbx, kColor);
  EXPECT_TRUE(same_bits(played(rgbx, Frame::Color, Frame::RGBX).pixels, filled(pixels)));
}

TEST(FrameFile, RedIsRedWhateverTheSensorsOrder) {
  const cv::Mat red = cv::Mat(1, 1, CV_8UC3, cv::Scalar(0, 0, 255));
  const cv::Mat bgrx = cv::Mat(1, 1, CV_8UC4, cv::Scalar(0, 0, 255, 9));
  const cv::Mat rgbx = cv::Mat(1, 1, CV_8UC4, cv::Scalar(255, 0, 0, 9));
  const FrameFile first = file_of(bgrx, PixelLayout::kBgrx, kColor);
  const FrameFile second = file_of(rgbx, PixelLayout::kRgbx, kColor);
  EXPECT_TRUE(same_pixels(cv::imdecode(first.bytes, cv::IMREAD_UNCHANGED), red));
  EXPECT_TRUE(same_pixels(cv::imdecode(second.bytes, cv::IMREAD_UNCHANGED), red));
}

TEST(FrameFile, JpegHasTheQualityThatWasAskedFor) {
  const cv::Mat pixels = color_pixels();
  RecordOptions options;
  const FrameFile usual = file_of(pixels, PixelLayout::kBgrx, kColor, options);
  EXPECT_EQ(usual.extension, ".jpg");
  EXPECT_EQ(played(usual, Frame::Color).size, pixels.size());
  options.jpeg_quality = 20;
  const FrameFile low = file_of(pixels, PixelLayout::kBgrx, kColor, options);
  EXPECT_LT(low.bytes.size(), usual.bytes.size());
}

TEST(FrameFile, GreyStaysGrey) {
  cv::Mat pixels(30, 40, CV_8UC1);
  cv::randu(pixels, 0, 256);
  const StreamImage image = played(file_of(pixels, PixelLayout::kGrey, kColor), Frame::Color);
  EXPECT_EQ(image.format, Frame::Gray);
  EXPECT_TRUE(same_bits(image.pixels, pixels));
  const FrameFile jpeg = file_of(pixels, PixelLayout::kGrey, kColor, RecordOptions());
  EXPECT_EQ(played(jpeg, Frame::Color).format, Frame::Gray);
}

TEST(FrameFile, UnusableFramePlaysWithoutData) {
  for (const Stream stream : {kColor, kInfrared, kDepth}) {
    const FrameFile file = file_of(cv::Mat(), PixelLayout::kNone, stream);
    EXPECT_TRUE(file.bytes.empty());
    EXPECT_EQ(file.extension, ".png");
  }
  EXPECT_TRUE(played(file_of(cv::Mat(), PixelLayout::kNone, kDepth), Frame::Depth).pixels.empty());
  EXPECT_EQ(file_of(cv::Mat(), PixelLayout::kNone, kColor, RecordOptions()).extension, ".jpg");
}

TEST(EncodeSet, LeavesOutOtherStreams) {
  RecordedSet set = encoded_set(1);
  for (FrameFile& file : set.files) file = FrameFile();
  RecordOptions options = with_png();
  options.streams = {false, true, false};
  encode_set(set, options);
  EXPECT_TRUE(set.files[kColor].bytes.empty());
  EXPECT_FALSE(set.files[kInfrared].bytes.empty());
  EXPECT_TRUE(set.files[kDepth].bytes.empty());
  EXPECT_EQ(set.failure, "");
}

TEST(EncodeSet, TellsWhatCannotBeEncoded) {
  RecordedSet set = encoded_set(1);
  set.frames[kDepth].pixels = cv::Mat();
  encode_set(set, with_png());
  EXPECT_EQ(set.failure.rfind("a picture cannot be encoded: ", 0), 0U) << set.failure;
  set = encoded_set(2);
  encode_set(set, with_png());
  EXPECT_EQ(set.failure, "");
}

}  // namespace
}  // namespace halcyra::record
