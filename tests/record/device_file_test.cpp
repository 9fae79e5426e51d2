#include "record/device_file.hpp"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"
#include "virtual_kinect/device_settings.hpp"

namespace halcyra::record {
namespace {

// What the virtual Kinect reads.
virtual_kinect::DeviceSettings read_back(const DeviceDescription& device) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.path() / "device.yml";
  write_text(file, device_file_text(device));
  virtual_kinect::DeviceSettings settings;
  std::string complaint;
  EXPECT_TRUE(virtual_kinect::read_device_settings(file, settings, complaint)) << complaint;
  return settings;
}

std::string serial_read_back(const std::string& serial) {
  DeviceDescription device;
  device.serial = serial;
  device.firmware = serial;
  const virtual_kinect::DeviceSettings settings = read_back(device);
  EXPECT_EQ(settings.firmware, settings.serial);
  return settings.serial;
}

TEST(DeviceFile, IsReadBackByTheVirtualKinect) {
  DeviceDescription device;
  device.serial = "009876543210";
  device.firmware = "4.0.3917.0";
  device.color = PixelLayout::kRgbx;
  device.pace = 9;
  const virtual_kinect::DeviceSettings settings = read_back(device);
  EXPECT_EQ(settings.serial, "009876543210");
  EXPECT_EQ(settings.firmware, "4.0.3917.0");
  EXPECT_EQ(settings.color_format, libfreenect2::Frame::RGBX);
  EXPECT_EQ(settings.pace, 9);
  device.color = PixelLayout::kBgrx;
  EXPECT_EQ(read_back(device).color_format, libfreenect2::Frame::BGRX);
}

TEST(DeviceFile, LeavesTheSerialNumberOut) {
  const DeviceDescription device;
  EXPECT_EQ(device_file_text(device).find("serial"), std::string::npos);
  EXPECT_EQ(read_back(device).serial, virtual_kinect::DeviceSettings().serial);
}

TEST(DeviceFile, KeepsTextsAsTheyAre) {
  for (const std::string text : {"",
                                 "0",
                                 "1e9",
                                 "true",
                                 "~",
                                 "---",
                                 "...",
                                 "%YAML:1.0",
                                 "a: b # c",
                                 "- a",
                                 "{a}",
                                 "[a]",
                                 " both ends ",
                                 "\"",
                                 "\\",
                                 "\"\"",
                                 "\\\\",
                                 "\\n",
                                 "\\x41",
                                 "it's",
                                 "'quoted'",
                                 "a\"b\\c'd",
                                 "<unknown>",
                                 "pace: 99999999999",
                                 "Zo\xC3\xAB \xE2\x82\xAC",
                                 "!!str",
                                 "&a *a",
                                 "a\\"}) {
    EXPECT_EQ(serial_read_back(text), text);
  }
}

TEST(DeviceFile, KeepsEveryByteThatIsNoControlCharacter) {
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text = std::string("a") + static_cast<char>(byte) + "b";
    const bool is_control = byte < 32 || byte == 127;
    EXPECT_EQ(serial_read_back(text), is_control ? "a?b" : text) << byte;
  }
  EXPECT_EQ(serial_read_back(std::string("a\0b", 3)), "a?b");
}

TEST(DeviceFile, CutsEndlessTexts) {
  EXPECT_EQ(serial_read_back(std::string(100'000, '\\')), std::string(1000, '\\'));
}

TEST(MeasuredPace, CountsTheIntervals) {
  EXPECT_EQ(measured_pace(31, 1.0), 30);
  EXPECT_EQ(measured_pace(10, 1.0), 9);
  EXPECT_EQ(measured_pace(2, 0.034), 29);
}

TEST(MeasuredPace, StaysWithinWhatTheVirtualKinectTakes) {
  EXPECT_EQ(measured_pace(2, 100.0), 1);
  EXPECT_EQ(measured_pace(1000, 0.1), 120);
  EXPECT_EQ(measured_pace(1, 0.0), 30);
  EXPECT_EQ(measured_pace(0, 0.0), 30);
  EXPECT_EQ(measured_pace(5, 0.0), 30);
}

}  // namespace
}  // namespace halcyra::record
