#include "record/recording_folder.hpp"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "tests/record/recorded_sets.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"
#include "virtual_kinect/device_settings.hpp"
#include "virtual_kinect/recording.hpp"

namespace halcyra::record {
namespace {

namespace fs = std::filesystem;
using libfreenect2::Frame;

constexpr StreamChoice kAll = {true, true, true};

class RecordingFolderTest : public ::testing::Test {
 protected:
  virtual_kinect::DeviceSettings device() const {
    virtual_kinect::DeviceSettings settings;
    std::string complaint;
    EXPECT_TRUE(virtual_kinect::read_device_settings(folder_ / "device.yml", settings, complaint))
        << complaint;
    return settings;
  }

  // What the virtual Kinect plays. It stops after the last set, so that the sets are counted.
  virtual_kinect::FrameSource played() const {
    virtual_kinect::DeviceSettings settings = device();
    settings.after = virtual_kinect::AfterLastSet::kStall;
    return virtual_kinect::open_recording(folder_, settings);
  }

  TemporaryFolder parent_;
  const fs::path folder_ = parent_.path() / "room";
};

TEST_F(RecordingFolderTest, IsPlayed) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  DeviceDescription device;
  device.serial = "0815";
  folder.describe(device);
  for (const std::uint32_t number : {1U, 2U, 3U}) ASSERT_TRUE(folder.commit(encoded_set(number)));
  ASSERT_TRUE(folder.finish());

  const virtual_kinect::FrameSource source = played();
  ASSERT_EQ(source.streams.size(), 3U);
  ASSERT_EQ(source.set_count, 3U);
  for (const std::uint32_t number : {1U, 2U, 3U}) {
    const RecordedSet set = encoded_set(number);
    EXPECT_TRUE(same_bits(source.image(Frame::Color, number - 1).pixels, set.frames[0].pixels));
    EXPECT_TRUE(same_bits(source.image(Frame::Ir, number - 1).pixels, set.frames[1].pixels));
    EXPECT_TRUE(same_bits(source.image(Frame::Depth, number - 1).pixels, set.frames[2].pixels));
  }
  EXPECT_EQ(this->device().serial, "0815");
  EXPECT_EQ(this->device().pace, 10);
}

TEST_F(RecordingFolderTest, CanBePlayedAfterEachSet) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  for (const std::uint32_t number : {1U, 2U}) {
    ASSERT_TRUE(folder.commit(encoded_set(number)));
    EXPECT_EQ(played().set_count, number);
  }
  fs::remove(folder_ / "depth/000002.tiff");  // as if killed before it had its name
  EXPECT_EQ(played().set_count, 1U);
}

TEST_F(RecordingFolderTest, CountsWhatItWrote) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  ASSERT_TRUE(folder.commit(encoded_set(1)));
  ASSERT_TRUE(folder.commit(encoded_set(2)));
  std::uintmax_t bytes = 0;
  for (const char* const stream : kStreamNames) {
    for (const auto& file : fs::directory_iterator(folder_ / stream)) bytes += file.file_size();
  }
  EXPECT_EQ(folder.sets(), 2U);
  EXPECT_EQ(folder.bytes(), bytes);
  EXPECT_EQ(folder.seconds(), 0.1);
  EXPECT_EQ(read_text(folder_ / "sets.csv"),
            "set,seconds,color_sequence,color_timestamp,ir_sequence,ir_timestamp,depth_sequence,"
            "depth_timestamp\n"
            "1,0.000,41,0,41,0,41,0\n"
            "2,0.100,42,0,42,0,42,0\n");
}

TEST_F(RecordingFolderTest, TellsTheOrderOfTheFirstUsableColors) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  ASSERT_TRUE(folder.commit(set_without_data(1)));
  RecordedSet set = encoded_set(2);
  set.frames[kColor].layout = PixelLayout::kRgbx;
  ASSERT_TRUE(folder.commit(set));
  ASSERT_TRUE(folder.commit(encoded_set(3)));
  ASSERT_TRUE(folder.finish());
  EXPECT_EQ(device().color_format, Frame::RGBX);
}

TEST_F(RecordingFolderTest, SaysTheOrderBeforeTheFirstPicture) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  RecordedSet set = encoded_set(1);
  set.frames[kColor].layout = PixelLayout::kRgbx;
  ASSERT_TRUE(folder.commit(set));
  EXPECT_EQ(device().color_format, Frame::RGBX);
}

TEST_F(RecordingFolderTest, HasOnlyTheChosenStreams) {
  RecordingFolder folder(folder_, {false, true, false});
  ASSERT_EQ(folder.prepare(), "");
  const RecordedSet set = encoded_set(1);
  ASSERT_TRUE(folder.commit(set));
  EXPECT_TRUE(fs::exists(folder_ / "ir/000001.png"));
  EXPECT_FALSE(fs::exists(folder_ / "color"));
  EXPECT_FALSE(fs::exists(folder_ / "depth"));
  EXPECT_EQ(folder.bytes(), set.files[kInfrared].bytes.size());
}

TEST_F(RecordingFolderTest, MayBeThereIfItIsEmpty) {
  fs::create_directory(folder_);
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  folder.clear();
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(RecordingFolderTest, GoesAgainIfItWasMade) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  EXPECT_TRUE(fs::exists(folder_ / "depth"));
  folder.clear();
  EXPECT_FALSE(fs::exists(folder_));
}

TEST_F(RecordingFolderTest, MustNotHoldAnything) {
  write_text(folder_ / ".hidden", "mine");
  EXPECT_EQ(RecordingFolder(folder_, kAll).prepare(), "\"" + folder_.string() + "\" is not empty");
  EXPECT_EQ(read_text(folder_ / ".hidden"), "mine");
  EXPECT_FALSE(fs::exists(folder_ / "color"));
}

TEST_F(RecordingFolderTest, MustNotBeAFile) {
  write_text(folder_, "mine");
  EXPECT_EQ(RecordingFolder(folder_, kAll).prepare(),
            "\"" + folder_.string() + "\" is not a folder");
  EXPECT_EQ(read_text(folder_), "mine");
}

TEST_F(RecordingFolderTest, MayBeALinkToAFolderButNotToNothing) {
  fs::create_symlink(parent_.path() / "elsewhere", folder_);
  EXPECT_EQ(RecordingFolder(folder_, kAll).prepare(),
            "\"" + folder_.string() + "\" is not a folder");
  fs::create_directory(parent_.path() / "elsewhere");
  EXPECT_EQ(RecordingFolder(folder_, kAll).prepare(), "");
}

TEST_F(RecordingFolderTest, NeedsAParent) {
  EXPECT_EQ(
      RecordingFolder(folder_ / "inner", kAll).prepare(),
      "cannot make the folder \"" + (folder_ / "inner").string() + "\": No such file or directory");
  EXPECT_FALSE(fs::exists(folder_));
}

TEST_F(RecordingFolderTest, StopsAtASetThatCouldNotBeEncoded) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  ASSERT_TRUE(folder.commit(encoded_set(1)));
  RecordedSet set = encoded_set(2);
  set.failure = "a picture cannot be encoded";
  EXPECT_FALSE(folder.commit(set));
  EXPECT_EQ(folder.failure(), "a picture cannot be encoded");
  EXPECT_EQ(played().set_count, 1U);
}

TEST_F(RecordingFolderTest, TakesBackASetThatCannotBeWrittenWhole) {
  RecordingFolder folder(folder_, kAll);
  ASSERT_EQ(folder.prepare(), "");
  ASSERT_TRUE(folder.commit(encoded_set(1)));
  fs::create_directory(folder_ / "depth/000002.tiff");  // in the way of the last of the three
  write_text(folder_ / "depth/000002.tiff/inner", "");
  EXPECT_FALSE(folder.commit(encoded_set(2)));
  EXPECT_EQ(folder.failure(), "cannot write to \"" + folder_.string() + "\": Is a directory");
  EXPECT_TRUE(folder.finish());
  EXPECT_FALSE(fs::exists(folder_ / "color/000002.png"));
  EXPECT_FALSE(fs::exists(folder_ / "ir/000002.png"));
  EXPECT_FALSE(fs::exists(folder_ / "depth/000002.tiff.part"));
  EXPECT_EQ(folder.sets(), 1U);
  EXPECT_EQ(played().set_count, 1U);
}

}  // namespace
}  // namespace halcyra::record
