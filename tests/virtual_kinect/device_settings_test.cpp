#include "virtual_kinect/device_settings.hpp"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

class DeviceSettingsTest : public testing::Test {
 protected:
  bool read(const std::string& text) {
    write_text(file_, text);
    settings_ = DeviceSettings();
    complaint_.clear();
    testing::internal::CaptureStderr();
    const bool usable = read_device_settings(file_, settings_, complaint_);
    // The caller prints the complaint; OpenCV must not print anything beside it.
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return usable;
  }

  bool read_entries(const std::string& entries) { return read("%YAML:1.0\n---\n" + entries); }

  // Refused, with a sentence of one line that names the file and, in quotes, `key`.
  void expect_refused(const std::string& entries, const std::string& key) {
    SCOPED_TRACE(entries);
    EXPECT_FALSE(read_entries(entries));
    EXPECT_NE(complaint_.find(file_.string()), std::string::npos) << complaint_;
    EXPECT_NE(complaint_.find("\"" + key + "\""), std::string::npos) << complaint_;
    EXPECT_EQ(complaint_.find('\n'), std::string::npos) << complaint_;
  }

  void expect_unreadable(const std::string& text) {
    SCOPED_TRACE(text);
    EXPECT_FALSE(read(text));
    EXPECT_NE(complaint_.find(file_.string()), std::string::npos) << complaint_;
    EXPECT_EQ(complaint_.find('\n'), std::string::npos) << complaint_;
  }

  void expect_defaults() {
    EXPECT_EQ(settings_.serial, "000000000000");
    EXPECT_EQ(settings_.firmware, "0.0.0");
    EXPECT_EQ(settings_.color_format, Frame::BGRX);
    EXPECT_EQ(settings_.pace, 30);
    EXPECT_EQ(settings_.after, AfterLastSet::kLoop);
    EXPECT_TRUE(settings_.opens);
    EXPECT_TRUE(settings_.starts);
    EXPECT_EQ(settings_.stop, StopOutcome::kOk);
    EXPECT_TRUE(settings_.closes);
    EXPECT_EQ(settings_.lost_percent, 0);
    EXPECT_EQ(settings_.damaged_percent, 0);
    EXPECT_FALSE(settings_.counters_wrap);
  }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.path() / "device.yml";
  DeviceSettings settings_;
  std::string complaint_;
};

TEST_F(DeviceSettingsTest, AMissingFileMeansTheDefaults) {
  EXPECT_TRUE(read_device_settings(folder_.path() / "missing.yml", settings_, complaint_));
  EXPECT_EQ(complaint_, "");
  expect_defaults();
}

TEST_F(DeviceSettingsTest, AnEmptyDocumentMeansTheDefaults) {
  for (const char* text : {"", "\n", "%YAML:1.0\n", "%YAML:1.0\n---\n", "%YAML:1.0\n---\n...\n",
                           "%YAML:1.0\n---\n# nothing yet\n", "# nothing yet\n"}) {
    SCOPED_TRACE(text);
    EXPECT_TRUE(read(text)) << complaint_;
    expect_defaults();
  }
}

TEST_F(DeviceSettingsTest, ReadsEveryKey) {
  ASSERT_TRUE(
      read_entries("serial: \"012345678901\"\n"
                   "firmware: \"4.3.3912.0\"\n"
                   "color_format: RGBX\n"
                   "pace: 12\n"
                   "after: stall\n"
                   "open: fail\n"
                   "start: fail\n"
                   "stop: fail\n"
                   "close: fail\n"
                   "drop: 5\n"
                   "corrupt: 100\n"
                   "counters: wrap\n"))
      << complaint_;
  EXPECT_EQ(settings_.serial, "012345678901");
  EXPECT_EQ(settings_.firmware, "4.3.3912.0");
  EXPECT_EQ(settings_.color_format, Frame::RGBX);
  EXPECT_EQ(settings_.pace, 12);
  EXPECT_EQ(settings_.after, AfterLastSet::kStall);
  EXPECT_FALSE(settings_.opens);
  EXPECT_FALSE(settings_.starts);
  EXPECT_EQ(settings_.stop, StopOutcome::kFail);
  EXPECT_FALSE(settings_.closes);
  EXPECT_EQ(settings_.lost_percent, 5);
  EXPECT_EQ(settings_.damaged_percent, 100);
  EXPECT_TRUE(settings_.counters_wrap);
}

TEST_F(DeviceSettingsTest, KnowsEveryWord) {
  const std::vector<std::pair<std::string, AfterLastSet>> after = {
      {"loop", AfterLastSet::kLoop},
      {"stall", AfterLastSet::kStall},
      {"pause", AfterLastSet::kPause},
      {"unplug", AfterLastSet::kUnplug}};
  for (const auto& [word, meaning] : after) {
    ASSERT_TRUE(read_entries("after: " + word + "\n")) << complaint_;
    EXPECT_EQ(settings_.after, meaning);
  }
  const std::vector<std::pair<std::string, StopOutcome>> stop = {
      {"ok", StopOutcome::kOk}, {"fail", StopOutcome::kFail}, {"late", StopOutcome::kLate}};
  for (const auto& [word, meaning] : stop) {
    ASSERT_TRUE(read_entries("stop: " + word + "\n")) << complaint_;
    EXPECT_EQ(settings_.stop, meaning);
  }
}

TEST_F(DeviceSettingsTest, ReadsTheDefaultsWhereTheyAreWritten) {
  ASSERT_TRUE(
      read_entries("serial: \"000000000000\"\n"
                   "firmware: \"0.0.0\"\n"
                   "color_format: BGRX\n"
                   "pace: 30\n"
                   "after: loop\n"
                   "open: ok\n"
                   "start: ok\n"
                   "stop: ok\n"
                   "close: ok\n"
                   "drop: 0\n"
                   "corrupt: 0\n"
                   "counters: zero\n"))
      << complaint_;
  expect_defaults();
}

TEST_F(DeviceSettingsTest, EachKeyIsOptional) {
  ASSERT_TRUE(read_entries("start: fail\n")) << complaint_;
  EXPECT_FALSE(settings_.starts);
  settings_.starts = true;
  expect_defaults();
}

TEST_F(DeviceSettingsTest, WordsMayBeQuoted) {
  ASSERT_TRUE(read_entries("after: \"stall\"\nopen: 'fail'\n")) << complaint_;
  EXPECT_EQ(settings_.after, AfterLastSet::kStall);
  EXPECT_FALSE(settings_.opens);
}

TEST_F(DeviceSettingsTest, TextIsAnyText) {
  ASSERT_TRUE(read_entries("serial: lab sensor 2\nfirmware: \"\"\n")) << complaint_;
  EXPECT_EQ(settings_.serial, "lab sensor 2");
  EXPECT_EQ(settings_.firmware, "");
  ASSERT_TRUE(read_entries("serial: a-pace 12345678901\nfirmware: a drop 12345678901\n"))
      << complaint_;
  ASSERT_TRUE(read_entries("serial: \"...\"\nfirmware: \"pace: 12345678901\"\n")) << complaint_;
  EXPECT_EQ(settings_.serial, "...");
  EXPECT_EQ(settings_.firmware, "pace: 12345678901");
}

TEST_F(DeviceSettingsTest, PaceGoesFrom0To120) {
  for (const int pace : {0, 1, 119, 120}) {
    ASSERT_TRUE(read_entries("pace: " + std::to_string(pace) + "\n")) << complaint_;
    EXPECT_EQ(settings_.pace, pace);
  }
  for (const char* pace : {"-1", "121", "1000000"}) {
    expect_refused(std::string("pace: ") + pace + "\n", "pace");
  }
}

TEST_F(DeviceSettingsTest, PaceIsNotWrappedAround) {
  // 2^32 + 30, 2^32 and -2^32 + 30: their low 32 bits are in range.
  for (const char* pace : {"4294967326", "4294967296", "-4294967266", " 0x10000001e"}) {
    expect_refused(std::string("pace: ") + pace + "\n", "pace");
    expect_refused(std::string("open: ok\npace :\n  ") + pace + "\n", "pace");
  }
}

TEST_F(DeviceSettingsTest, NumbersAreNotWrappedAroundInAnySpelling) {
  for (const char* text :
       {"--- pace: 4294967326\n", "---   pace: 4294967326\n", "---\n{pace: 4294967326}\n",
        "--- {open: ok, pace: 4294967326}\n", "---\n{ open: ok,\n  pace: 4294967326 }\n",
        "pace: !!int 4294967326\n", "pace: !!int\n  4294967326\n", "drop: !!int 4294967297\n",
        "pace: # sets\n  4294967326\n"}) {
    expect_unreadable(text);
    EXPECT_NE(complaint_.find("has too many digits"), std::string::npos) << complaint_;
  }
}

TEST_F(DeviceSettingsTest, SharesGoFrom0To100) {
  for (const std::string key : {"drop", "corrupt"}) {
    for (const char* share : {"-1", "101", "4294967297", "0.5", "\"5\"", "all"}) {
      expect_refused(key + ": " + share + "\n", key);
    }
  }
}

TEST_F(DeviceSettingsTest, PaceIsAWholeNumber) {
  for (const char* pace : {"30.0", "29.97", "\"30\"", "fast", "[ 30 ]", "{ sets: 30 }"}) {
    expect_refused(std::string("pace: ") + pace + "\n", "pace");
  }
}

TEST_F(DeviceSettingsTest, BareNumbersAreNoText) {
  for (const std::string key : {"serial", "firmware"}) {
    for (const char* value : {"12345", "000000000000", "1.5", "-3", "[ text ]", "{ a: text }"}) {
      expect_refused(key + ": " + value + "\n", key);
    }
  }
  expect_unreadable("%YAML:1.0\n---\nfirmware: 1.2.3\n");
}

TEST_F(DeviceSettingsTest, ChoicesAreTakenToTheLetter) {
  expect_refused("color_format: bgrx\n", "color_format");
  expect_refused("color_format: Gray\n", "color_format");
  expect_refused("color_format: 4\n", "color_format");
  expect_refused("after: Loop\n", "after");
  expect_refused("after: stop\n", "after");
  expect_refused("open: no\n", "open");
  expect_refused("open: 1\n", "open");
  expect_refused("start: failed\n", "start");
  expect_refused("start: \"\"\n", "start");
  expect_refused("stop: never\n", "stop");
  expect_refused("close: late\n", "close");
  expect_refused("counters: one\n", "counters");
}

TEST_F(DeviceSettingsTest, UnknownKeysAreRefused) {
  expect_refused("speed: 30\n", "speed");
  expect_refused("Pace: 30\n", "Pace");
  expect_refused("pace: 30\nnote: \"one too many\"\n", "note");
}

TEST_F(DeviceSettingsTest, AKeyStandsThereOnce) {
  expect_refused("pace: 10\nopen: ok\npace: 10\n", "pace");
}

TEST_F(DeviceSettingsTest, AKeyNeedsAValue) {
  expect_unreadable("%YAML:1.0\n---\nserial:\n");
  expect_unreadable("%YAML:1.0\n---\nserial:\npace: 30\n");
}

TEST_F(DeviceSettingsTest, RefusedSettingsChangeNothing) {
  EXPECT_FALSE(read_entries("pace: 10\nopen: fail\nafter: never\n"));
  expect_defaults();
}

TEST_F(DeviceSettingsTest, WhatIsNoMapIsRefused) {
  expect_unreadable("%YAML:1.0\n---\n- pace\n- open\n");
  expect_unreadable("%YAML:1.0\n---\njust text\n");
  expect_unreadable("just text\n");
  expect_unreadable("%YAML:1.0\n---\npace: [ 1, 2\n");
  expect_unreadable("%YAML:1.0\n---\nserial: \"no end\n");
  expect_unreadable("%YAML:1.0\n---\n\tpace: 30\n");
  expect_unreadable("{ \"pace\": 1");
  expect_unreadable(std::string("pace: 5\n\0open: fail\n", 19));
  expect_unreadable("\x89PNG\r\n\x1A\n");
  expect_unreadable("%YAML:1.0\n---\npace: 1\n...\n---\nopen: fail\n");
}

// OpenCV's reader hangs on these.
TEST_F(DeviceSettingsTest, WhatStandsBehindTheMapIsRefused) {
  for (const char* text :
       {"pace: 1\n...\n- x\n", "pace: 1\n...- x\n", "pace: 1\n...\n# more\n  - x\n",
        "---\n...\n-\n", "- 1\n...\n--\n", " pace: 1\na.--\n", "--- pace: 1\nabc-\n",
        "---\n  pace: 1\n abc-\n", "---\n{pace: 1}abc-\n", "---\n{ pace: 1,\n open: ok }\nabc-\n",
        "---\n{ pace: 1,\n open: ok }abc-\n"}) {
    expect_unreadable(text);
  }
}

TEST_F(DeviceSettingsTest, TheMapMayStandAnywhereInItsLines) {
  for (const char* text :
       {"---\n  pace: 5\n  open: fail\n", "--- pace: 5\n    open: fail\n",
        "pace: 5\nopen:\n  fail\n", "---\n{pace: 5, open: fail}\n",
        "---\n{ pace: 5,\n  open: fail } # both\n...\n",
        "%YAML:1.0\n# first\n---\n# second\npace: 5\n# third\nopen: fail\n..."}) {
    SCOPED_TRACE(text);
    EXPECT_TRUE(read(text)) << complaint_;
    EXPECT_EQ(settings_.pace, 5);
    EXPECT_FALSE(settings_.opens);
  }
}

TEST_F(DeviceSettingsTest, ACommentAfterTheEndOfTheMapIsNot) {
  ASSERT_TRUE(read("pace: 5\n...\n# a - b\n\n")) << complaint_;
  EXPECT_EQ(settings_.pace, 5);
}

TEST_F(DeviceSettingsTest, WhatIsNoFileIsRefused) {
  std::filesystem::create_directory(file_);
  EXPECT_FALSE(read_device_settings(file_, settings_, complaint_));
  EXPECT_NE(complaint_.find(file_.string()), std::string::npos) << complaint_;
  std::filesystem::remove(file_);
  std::filesystem::create_symlink("nowhere", file_);
  EXPECT_FALSE(read_device_settings(file_, settings_, complaint_));
}

TEST_F(DeviceSettingsTest, TheVersionLineMayBeLeftOut) {
  for (const char* text :
       {"pace: 5\n", "---\npace: 5\n", "# by hand\npace: 5\n", "pace: 5", "\xEF\xBB\xBFpace: 5\n",
        "\xEF\xBB\xBF%YAML:1.0\n---\npace: 5\n", "%YAML:1.0\r\n---\r\npace: 5\r\n",
        "pace: 5\r\nafter: loop\r\n", "%YAML 1.2\n---\npace: 5 # sets per second, a slow one\n"}) {
    SCOPED_TRACE(text);
    EXPECT_TRUE(read(text)) << complaint_;
    EXPECT_EQ(settings_.pace, 5);
  }
}

}  // namespace
}  // namespace halcyra::virtual_kinect
