#include "virtual_kinect/image_file.hpp"

#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/support/temporary_folder.hpp"
#include "tests/virtual_kinect/test_recording.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

class ImageFileTest : public testing::Test {
 protected:
  StreamImage write_and_read(const std::string& name, const cv::Mat& written, Frame::Type stream,
                             Frame::Format color_format = Frame::BGRX) {
    write_image(folder_.path() / name, written);
    return read_image(folder_.path() / name, stream, color_format);
  }

  StreamImage read_bytes(const std::string& name, const std::string& bytes, Frame::Type stream,
                         Frame::Format color_format = Frame::BGRX) {
    write_text(folder_.path() / name, bytes);
    return read_image(folder_.path() / name, stream, color_format);
  }

  TemporaryFolder folder_;
};

void expect_unreadable_color(const StreamImage& image, Frame::Format format) {
  EXPECT_TRUE(image.pixels.empty());
  EXPECT_EQ(image.size, cv::Size(1920, 1080));
  EXPECT_EQ(image.pixel_size, 4U);
  EXPECT_EQ(image.format, format);
}

void expect_unreadable_floats(const StreamImage& image) {
  EXPECT_TRUE(image.pixels.empty());
  EXPECT_EQ(image.size, cv::Size(512, 424));
  EXPECT_EQ(image.pixel_size, 4U);
  EXPECT_EQ(image.format, Frame::Float);
}

// Every pixel differs from its neighbours, so that a turned or shifted picture shows.
cv::Mat gradient(int type) {
  cv::Mat pixels(5, 7, type);
  for (int y = 0; y < pixels.rows; ++y) {
    for (int x = 0; x < pixels.cols * pixels.channels(); ++x) {
      pixels.ptr(y)[x] = static_cast<unsigned char>(y * 40 + x);
    }
  }
  return pixels;
}

void expect_channels(const StreamImage& image, const cv::Mat& written, Frame::Format format) {
  ASSERT_EQ(image.pixels.type(), CV_8UC4);
  ASSERT_EQ(image.pixels.size(), written.size());
  ASSERT_TRUE(image.pixels.isContinuous());
  EXPECT_EQ(image.size, written.size());
  EXPECT_EQ(image.pixel_size, 4U);
  EXPECT_EQ(image.format, format);
  const int blue = format == Frame::RGBX ? 2 : 0;
  const int channels = written.channels();
  for (int y = 0; y < written.rows; ++y) {
    for (int x = 0; x < written.cols; ++x) {
      const unsigned char* from = written.ptr(y, x);
      const auto& pixel = image.pixels.at<cv::Vec4b>(y, x);
      EXPECT_EQ(pixel[blue], from[0]);
      EXPECT_EQ(pixel[1], from[1]);
      EXPECT_EQ(pixel[2 - blue], from[2]);
      EXPECT_EQ(pixel[3], channels == 4 ? from[3] : 255);
    }
  }
}

TEST_F(ImageFileTest, ThreeChannelColorGetsAFullFourthByte) {
  const cv::Mat written = gradient(CV_8UC3);
  for (const char* name : {"a.png", "a.bmp"}) {
    SCOPED_TRACE(name);
    expect_channels(write_and_read(name, written, Frame::Color), written, Frame::BGRX);
    expect_channels(write_and_read(name, written, Frame::Color, Frame::RGBX), written, Frame::RGBX);
  }
}

TEST_F(ImageFileTest, FourChannelColorKeepsItsFourthByte) {
  const cv::Mat written = gradient(CV_8UC4);
  expect_channels(write_and_read("a.png", written, Frame::Color), written, Frame::BGRX);
  expect_channels(write_and_read("a.png", written, Frame::Color, Frame::RGBX), written,
                  Frame::RGBX);
}

TEST_F(ImageFileTest, ReadsJpegColor) {
  for (const char* name : {"a.jpg", "a.jpeg"}) {
    const StreamImage image =
        write_and_read(name, cv::Mat(16, 24, CV_8UC3, cv::Scalar(10, 120, 230)), Frame::Color);
    const cv::Mat decoded = cv::imread((folder_.path() / name).string(), cv::IMREAD_UNCHANGED);
    ASSERT_EQ(decoded.type(), CV_8UC3);
    expect_channels(image, decoded, Frame::BGRX);
  }
}

TEST_F(ImageFileTest, OneChannelColorStaysAsItIs) {
  const cv::Mat written = gradient(CV_8UC1);
  for (const Frame::Format format : {Frame::BGRX, Frame::RGBX}) {
    const StreamImage image = write_and_read("a.png", written, Frame::Color, format);
    EXPECT_EQ(image.format, Frame::Gray);
    EXPECT_EQ(image.pixel_size, 1U);
    EXPECT_EQ(image.size, written.size());
    ASSERT_EQ(image.pixels.type(), CV_8UC1);
    EXPECT_EQ(cv::norm(image.pixels, written, cv::NORM_INF), 0.0);
  }
}

// A JPEG whose EXIF header asks for a quarter turn.
std::vector<unsigned char> turned_jpeg() {
  std::vector<unsigned char> jpeg;
  cv::imencode(".jpg", cv::Mat(8, 24, CV_8UC3, cv::Scalar(0, 0, 255)), jpeg);
  const std::vector<unsigned char> exif = {0xFF, 0xE1, 0x00, 0x22, 'E',  'x',  'i',  'f',  0x00,
                                           0x00, 'M',  'M',  0x00, 0x2A, 0x00, 0x00, 0x00, 0x08,
                                           0x00, 0x01, 0x01, 0x12, 0x00, 0x03, 0x00, 0x00, 0x00,
                                           0x01, 0x00, 0x06, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
  jpeg.insert(jpeg.begin() + 2, exif.begin(), exif.end());
  return jpeg;
}

TEST_F(ImageFileTest, IsNotTurnedByAnOrientationTag) {
  const std::vector<unsigned char> jpeg = turned_jpeg();
  ASSERT_EQ(cv::imdecode(jpeg, cv::IMREAD_COLOR).size(), cv::Size(8, 24))
      << "the tag has no effect";
  const StreamImage image =
      read_bytes("a.jpg", std::string(jpeg.begin(), jpeg.end()), Frame::Color);
  EXPECT_EQ(image.pixels.size(), cv::Size(24, 8));
}

TEST_F(ImageFileTest, SixteenBitGreyBecomesFloatsOfTheSameValues) {
  cv::Mat written(3, 4, CV_16UC1);
  for (int i = 0; i < 12; ++i) {
    written.at<ushort>(i / 4, i % 4) = static_cast<ushort>(i == 11 ? 65535 : i * 1001);
  }
  for (const Frame::Type stream : {Frame::Ir, Frame::Depth}) {
    for (const char* name : {"a.png", "a.tiff"}) {
      const StreamImage image = write_and_read(name, written, stream);
      EXPECT_EQ(image.format, Frame::Float);
      EXPECT_EQ(image.pixel_size, 4U);
      EXPECT_EQ(image.size, written.size());
      ASSERT_EQ(image.pixels.type(), CV_32FC1);
      ASSERT_TRUE(image.pixels.isContinuous());
      for (int i = 0; i < 12; ++i) {
        EXPECT_EQ(image.pixels.at<float>(i / 4, i % 4),
                  static_cast<float>(written.at<ushort>(i / 4, i % 4)));
      }
    }
  }
}

TEST_F(ImageFileTest, FloatsKeepEveryValue) {
  const std::vector<float> values = {std::numeric_limits<float>::infinity(),
                                     -std::numeric_limits<float>::infinity(),
                                     -7.25F,
                                     0.0F,
                                     1e-30F,
                                     std::numeric_limits<float>::max()};
  cv::Mat written(1, 7, CV_32FC1);
  std::copy(values.begin(), values.end(), written.begin<float>());
  written.at<float>(0, 6) = std::numeric_limits<float>::quiet_NaN();
  const StreamImage image = write_and_read("a.tiff", written, Frame::Depth);
  ASSERT_EQ(image.pixels.type(), CV_32FC1);
  ASSERT_EQ(image.pixels.size(), written.size());
  EXPECT_TRUE(std::equal(values.begin(), values.end(), image.pixels.begin<float>()));
  EXPECT_TRUE(std::isnan(image.pixels.at<float>(0, 6)));
}

TEST_F(ImageFileTest, OneChannelOfAnyDepthBecomesFloats) {
  const StreamImage bytes =
      write_and_read("a.png", cv::Mat(2, 2, CV_8UC1, cv::Scalar(200)), Frame::Ir);
  EXPECT_EQ(bytes.pixels.at<float>(1, 1), 200.0F);
  const StreamImage doubles =
      write_and_read("a.tiff", cv::Mat(2, 2, CV_64FC1, cv::Scalar(-2.5)), Frame::Ir);
  EXPECT_EQ(doubles.pixels.at<float>(1, 1), -2.5F);
  EXPECT_EQ(doubles.pixels.type(), CV_32FC1);
}

TEST_F(ImageFileTest, AFileOfZeroBytesHasNoPixels) {
  expect_unreadable_color(read_bytes("a.png", "", Frame::Color), Frame::BGRX);
  expect_unreadable_color(read_bytes("a.jpg", "", Frame::Color, Frame::RGBX), Frame::RGBX);
  expect_unreadable_floats(read_bytes("a.png", "", Frame::Ir));
  expect_unreadable_floats(read_bytes("a.tiff", "", Frame::Depth));
}

TEST_F(ImageFileTest, AFileThatCannotBeDecodedHasNoPixels) {
  expect_unreadable_color(read_bytes("a.png", "no picture", Frame::Color), Frame::BGRX);
  expect_unreadable_floats(read_bytes("a.png", "no picture", Frame::Ir));
  expect_unreadable_floats(read_bytes("a.tiff", "II*", Frame::Depth));
}

TEST_F(ImageFileTest, ACutOffFileHasNoPixels) {
  for (const char* extension : {".png", ".bmp"}) {
    std::vector<unsigned char> bytes;
    cv::imencode(extension, gradient(CV_8UC3), bytes);
    for (const std::size_t length : {std::size_t{1}, std::size_t{20}, bytes.size() / 2}) {
      SCOPED_TRACE(extension);
      testing::internal::CaptureStderr();  // the decoders print warnings
      const StreamImage image = read_bytes(
          "a", std::string(bytes.begin(), bytes.begin() + static_cast<long>(length)), Frame::Color);
      testing::internal::GetCapturedStderr();
      expect_unreadable_color(image, Frame::BGRX);
    }
  }
}

TEST_F(ImageFileTest, AFileThatIsMissingHasNoPixels) {
  expect_unreadable_color(read_image(folder_.path() / "no.png", Frame::Color, Frame::BGRX),
                          Frame::BGRX);
  expect_unreadable_floats(read_image(folder_.path(), Frame::Depth, Frame::BGRX));
}

TEST_F(ImageFileTest, AFileThatDoesNotSuitItsStreamHasNoPixels) {
  for (const int type : {CV_16UC1, CV_16UC3, CV_16UC4}) {
    expect_unreadable_color(
        write_and_read("a.png", cv::Mat(2, 2, type, cv::Scalar::all(9)), Frame::Color),
        Frame::BGRX);
  }
  for (const int type : {CV_8UC3, CV_16UC3, CV_16UC4}) {
    expect_unreadable_floats(
        write_and_read("a.png", cv::Mat(2, 2, type, cv::Scalar::all(9)), Frame::Ir));
  }
  expect_unreadable_floats(
      write_and_read("a.tiff", cv::Mat(2, 2, CV_32FC3, cv::Scalar::all(9)), Frame::Depth));
}

}  // namespace
}  // namespace halcyra::virtual_kinect
