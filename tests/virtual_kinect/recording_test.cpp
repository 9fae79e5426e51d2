#include "virtual_kinect/recording.hpp"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/virtual_kinect/test_recording.hpp"

namespace halcyra::virtual_kinect {
namespace {

namespace fs = std::filesystem;
using libfreenect2::Frame;

DeviceSettings stalling() {
  DeviceSettings settings;
  settings.after = AfterLastSet::kStall;
  return settings;
}

class RecordingTest : public testing::Test {
 protected:
  void make_files(const std::string& stream, const std::vector<std::string>& names) {
    for (const std::string& name : names) write_text(folder_.path() / stream / name, "");
  }

  std::vector<std::string> names(Frame::Type stream) {
    std::vector<std::string> result;
    for (const fs::path& file : stream_files(folder_.path(), stream)) {
      result.push_back(file.filename().string());
    }
    return result;
  }

  TemporaryFolder folder_;
};

using Names = std::vector<std::string>;

TEST_F(RecordingTest, FilesAreTakenInAscendingOrderOfTheirNamesBytes) {
  make_files("color", {"b.png", "a.png", "10.png", "9.png", "B.png", "\xC3\xA4.png", "a-1.png",
                       "a.jpg", "_.png"});
  EXPECT_EQ(names(Frame::Color), Names({"10.png", "9.png", "B.png", "_.png", "a-1.png", "a.jpg",
                                        "a.png", "b.png", "\xC3\xA4.png"}));
}

TEST_F(RecordingTest, OnlyTheExtensionsOfTheStreamCount) {
  const Names all = {"a.png", "b.jpg",  "c.jpeg",    "d.bmp", "e.tiff", "f.tif",
                     "g.PNG", "h.Jpeg", "i.png.bak", "j.txt", "png",    "k.gif"};
  make_files("color", all);
  make_files("ir", all);
  make_files("depth", all);
  EXPECT_EQ(names(Frame::Color), Names({"a.png", "b.jpg", "c.jpeg", "d.bmp"}));
  EXPECT_EQ(names(Frame::Ir), Names({"a.png", "e.tiff"}));
  EXPECT_EQ(names(Frame::Depth), Names({"a.png", "e.tiff"}));
}

TEST_F(RecordingTest, OnlyRegularFilesCount) {
  make_files("ir", {"a.png"});
  fs::create_directory(folder_.path() / "ir" / "b.png");
  fs::create_symlink("nowhere", folder_.path() / "ir" / "c.png");
  EXPECT_EQ(names(Frame::Ir), Names({"a.png"}));
}

TEST_F(RecordingTest, AMissingFolderHasNoFiles) {
  EXPECT_EQ(names(Frame::Color), Names());
  make_files("", {"depth"});  // a file of that name
  EXPECT_EQ(names(Frame::Depth), Names());
}

TEST_F(RecordingTest, FilesAreGivenWithTheirFolder) {
  make_files("depth", {"a.png"});
  EXPECT_EQ(stream_files(folder_.path(), Frame::Depth),
            std::vector<fs::path>({folder_.path() / "depth" / "a.png"}));
}

TEST_F(RecordingTest, SetKHoldsTheKthFileOfEachStream) {
  write_recording(folder_.path(), 3);
  const FrameSource source = open_recording(folder_.path(), stalling());
  EXPECT_EQ(source.streams, std::vector<Frame::Type>({Frame::Color, Frame::Ir, Frame::Depth}));
  ASSERT_EQ(source.set_count, 3U);
  for (std::uint64_t set = 0; set < 3; ++set) {
    EXPECT_EQ(source.image(Frame::Color, set).pixels.at<cv::Vec4b>(2, 3),
              cv::Vec4b(static_cast<unsigned char>(set), static_cast<unsigned char>(100 + set), 200,
                        255));
    const auto number = static_cast<float>(set);
    EXPECT_EQ(source.image(Frame::Ir, set).pixels.at<float>(1, 4), 1000.0F + number);
    EXPECT_EQ(source.image(Frame::Depth, set).pixels.at<float>(1, 4), 2000.0F + number);
  }
}

TEST_F(RecordingTest, TheShortestStreamDecidesHowManySetsThereAre) {
  write_recording(folder_.path(), 2);
  write_color(folder_.path(), 2);
  write_color(folder_.path(), 3);
  write_ir(folder_.path(), 2);
  EXPECT_EQ(open_recording(folder_.path(), stalling()).set_count, 2U);
}

TEST_F(RecordingTest, StartsAgainAfterTheLastSet) {
  write_recording(folder_.path(), 2);
  write_color(folder_.path(), 2);
  const FrameSource source = open_recording(folder_.path(), DeviceSettings());
  EXPECT_EQ(source.set_count, std::nullopt);
  for (const std::uint64_t set : {0U, 1U, 2U, 3U, 4U}) {
    EXPECT_EQ(source.image(Frame::Color, set).pixels.at<cv::Vec4b>(0, 0)[0], set % 2);
    EXPECT_EQ(source.image(Frame::Depth, set).pixels.at<float>(0, 0),
              2000.0F + static_cast<float>(set % 2));
  }
}

TEST_F(RecordingTest, AStreamWithoutFilesDeliversNothing) {
  write_color(folder_.path(), 0);
  write_color(folder_.path(), 1);
  write_depth(folder_.path(), 0);
  fs::create_directory(folder_.path() / "ir");
  const FrameSource source = open_recording(folder_.path(), stalling());
  EXPECT_EQ(source.streams, std::vector<Frame::Type>({Frame::Color, Frame::Depth}));
  EXPECT_EQ(source.set_count, 1U);
}

TEST_F(RecordingTest, AnEmptyRecordingDeliversNothing) {
  EXPECT_TRUE(open_recording(folder_.path(), DeviceSettings()).streams.empty());
  EXPECT_TRUE(open_recording(folder_.path() / "missing", stalling()).streams.empty());
}

TEST_F(RecordingTest, ColorHasTheFormatOfTheSettings) {
  write_color(folder_.path(), 7);
  DeviceSettings settings;
  EXPECT_EQ(open_recording(folder_.path(), settings).image(Frame::Color, 0).format, Frame::BGRX);
  settings.color_format = Frame::RGBX;
  const StreamImage image = open_recording(folder_.path(), settings).image(Frame::Color, 0);
  EXPECT_EQ(image.format, Frame::RGBX);
  EXPECT_EQ(image.pixels.at<cv::Vec4b>(0, 0), cv::Vec4b(200, 107, 7, 255));
}

TEST_F(RecordingTest, RemovedFilesHaveNoPixels) {
  write_recording(folder_.path(), 2);
  const FrameSource source = open_recording(folder_.path(), stalling());
  fs::remove_all(folder_.path() / "color");
  fs::remove(folder_.path() / "ir" / numbered(1));
  EXPECT_TRUE(source.image(Frame::Color, 0).pixels.empty());
  EXPECT_TRUE(source.image(Frame::Ir, 1).pixels.empty());
  EXPECT_FALSE(source.image(Frame::Ir, 0).pixels.empty());
}

TEST_F(RecordingTest, ALoopDoesNotDecodeAFileTwice) {
  write_recording(folder_.path(), 1);
  const FrameSource source = open_recording(folder_.path(), DeviceSettings());
  EXPECT_FALSE(source.image(Frame::Color, 0).pixels.empty());
  fs::remove_all(folder_.path() / "color");
  EXPECT_FALSE(source.image(Frame::Color, 1).pixels.empty());
}

}  // namespace
}  // namespace halcyra::virtual_kinect
