// Runs of the recorder on recordings of the virtual Kinect.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/e2e/program.hpp"
#include "tests/e2e/recording.hpp"
#include "virtual_kinect/device_settings.hpp"
#include "virtual_kinect/frame_source.hpp"

namespace halcyra {

// A set of a recording as the virtual Kinect plays it, in the order colour, infrared, depth.
struct PlayedSet {
  std::vector<virtual_kinect::StreamImage> images;
};

// A row of sets.csv.
struct TableRow {
  std::uint32_t number = 0;
  double seconds = 0.0;
  std::vector<std::uint32_t> sequences;  // of the three streams
  std::vector<std::uint32_t> timestamps;
};

// What device.yml says to the virtual Kinect, which must be able to read it.
virtual_kinect::DeviceSettings device_of(const std::filesystem::path& recording);

// All sets that the virtual Kinect plays.
std::vector<PlayedSet> played_sets(const std::filesystem::path& recording);

std::vector<TableRow> table_of(const std::filesystem::path& recording);

// Whether two frames are the same in every bit.
::testing::AssertionResult same_image(const virtual_kinect::StreamImage& actual,
                                      const virtual_kinect::StreamImage& expected);

// The files of one stream in a recording, hidden and unfinished ones as well.
std::size_t files_of(const std::filesystem::path& recording, const std::string& stream);

class RecorderRun : public ::testing::Test {
 protected:
  RecorderRun() : source_(stage_.folder() / "source") { source_.set_device("pace: 0\n"); }

  // Sets of which no two are alike. Infrared holds fractions, NaN and infinities, depth whole
  // numbers.
  void add_sets(int count);

  // Starts the recorder on the source; its folder is the first argument.
  ProgramStart start(const std::vector<std::string>& options) const;

  // Runs it to its end and returns the exit status, -1 if there was none.
  int run(const ProgramStart& start);
  int run(const std::vector<std::string>& options) { return run(start(options)); }

  std::filesystem::path folder() const { return stage_.working_folder() / "recorded"; }

  // Expects that each recorded frame is the one that the source delivered under its number, bit for
  // bit, and that each set can be played.
  void expect_frames_of_the_source() const;

  Stage stage_;
  Recording source_;
  std::string output_;  // of the last run
  std::string errors_;
};

}  // namespace halcyra
