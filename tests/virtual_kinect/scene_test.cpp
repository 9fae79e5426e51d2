#include "virtual_kinect/scene.hpp"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/virtual_kinect/scene_variable.hpp"
#include "tests/virtual_kinect/test_recording.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

class SceneTest : public testing::Test {
 protected:
  // What find_scene writes on standard error.
  std::string find(const std::string& value) {
    const SceneVariable variable(value);
    return find();
  }

  std::string find() {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    scene_ = find_scene();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    return testing::internal::GetCapturedStderr();
  }

  void expect_refused(const std::string& value, const std::string& named) {
    SCOPED_TRACE(value);
    const std::string said = find(value);
    EXPECT_FALSE(scene_);
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_EQ(said.find('\n'), said.size() - 1) << said;
    EXPECT_NE(said.find(named), std::string::npos) << said;
  }

  TemporaryFolder folder_;
  std::optional<Scene> scene_;
};

TEST_F(SceneTest, WithoutTheVariableThereIsNothingAndNothingIsSaid) {
  unsetenv("VIRTUAL_KINECT");
  EXPECT_EQ(find(), "");
  EXPECT_FALSE(scene_);
  EXPECT_EQ(find(""), "");
  EXPECT_FALSE(scene_);
}

TEST_F(SceneTest, AFolderIsARecording) {
  write_recording(folder_.path(), 2);
  write_device_yml(folder_.path(), "serial: \"42\"\nafter: stall\n");
  EXPECT_EQ(find(folder_.path().string()), "");
  ASSERT_TRUE(scene_);
  EXPECT_EQ(scene_->settings.serial, "42");
  const FrameSource source = scene_->open_source();
  EXPECT_EQ(source.set_count, 2U);
  EXPECT_EQ(source.image(Frame::Ir, 1).pixels.at<float>(0, 0), 1001.0F);
}

TEST_F(SceneTest, AFolderNeedsNoSettings) {
  EXPECT_EQ(find(folder_.path().string() + "/"), "");
  ASSERT_TRUE(scene_);
  EXPECT_EQ(scene_->settings.serial, "000000000000");
}

TEST_F(SceneTest, WhatIsNoFolderIsRefused) {
  const std::string file = (folder_.path() / "file").string();
  write_text(file, "");
  expect_refused(file, file);
  expect_refused((folder_.path() / "missing").string(), (folder_.path() / "missing").string());
  expect_refused("Room", "Room");
  expect_refused(" ", "\" \"");
}

TEST_F(SceneTest, TheReasonIsGiven) {
  const std::string file = (folder_.path() / "file").string();
  write_text(file, "");
  EXPECT_NE(find(file).find("not a folder"), std::string::npos);
  EXPECT_NE(find(file + "2").find("no such folder"), std::string::npos);
}

TEST_F(SceneTest, TheRenderedRoomIsASensorLikeAnother) {
  EXPECT_EQ(find("room"), "");
  ASSERT_TRUE(scene_);
  EXPECT_EQ(scene_->settings.serial, "000000000000");
  EXPECT_EQ(scene_->settings.pace, 30);
}

TEST_F(SceneTest, AFolderOfTheRoomsNameIsReachedByItsPath) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::create_directory(folder_.path() / "room");
  std::filesystem::current_path(folder_.path());
  EXPECT_EQ(find("./room"), "");
  ASSERT_TRUE(scene_);
  EXPECT_TRUE(scene_->open_source().streams.empty());
  std::filesystem::current_path(before);
}

TEST_F(SceneTest, SettingsThatCannotBeUsedAreRefused) {
  const std::string recording = folder_.path().string();
  for (const char* entries : {"pace: 200\n", "serial: 5\n", "open: never\n", "speed: 1\n"}) {
    write_device_yml(folder_.path(), entries);
    expect_refused(recording, "device.yml");
    expect_refused(recording, std::string(entries).substr(0, std::string(entries).find(':')));
  }
  write_text(folder_.path() / "device.yml", "[");
  expect_refused(recording, "device.yml");
}

TEST_F(SceneTest, SaysOneLineWhateverTheValueHolds) {
  expect_refused("two\nlines\r", "lines");
  write_device_yml(folder_.path(), "two\x01keys: 1\n");
  expect_refused(folder_.path().string(), "device.yml");
}

}  // namespace
}  // namespace halcyra::virtual_kinect
