// What the recorder writes when all goes well.
#include <signal.h>

#include <cmath>

#include <gtest/gtest.h>

#include "dashboard/dashboard_geometry.hpp"
#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/recorder_run.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/text_file.hpp"
#include "virtual_kinect/room_source.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;
using Values = std::vector<std::uint32_t>;

class Recorder : public RecorderRun {
 protected:
  void wait_for_sets(std::size_t count) const {
    EXPECT_TRUE(wait_until([&] { return files_of(folder(), "depth") > count; }));
  }

  // The sequence numbers of the depth frames.
  Values recorded_numbers() const {
    Values numbers;
    for (const TableRow& row : table_of(folder())) numbers.push_back(row.sequences[2]);
    return numbers;
  }

  // Whether the streams hold as many files, all of them finished.
  void expect_whole_sets(std::size_t sets) const {
    for (const char* const stream : {"color", "ir", "depth"}) {
      EXPECT_EQ(files_of(folder(), stream), sets) << stream;
    }
  }
};

// Up to 16 sets always find a place in the queue, so that none is dropped.
TEST_F(Recorder, WritesEachFrameBitForBit) {
  for (const std::string order : {"BGRX", "RGBX"}) {
    source_.set_device("pace: 0\ncolor_format: " + order + "\n");
    if (order == "BGRX") add_sets(5);
    fs::remove_all(folder());
    EXPECT_EQ(run({"--color", "png", "--sets", "12"}), 0) << errors_;
    EXPECT_EQ(device_of(folder()).color_format,
              order == "BGRX" ? libfreenect2::Frame::BGRX : libfreenect2::Frame::RGBX);
    expect_frames_of_the_source();
    EXPECT_EQ(recorded_numbers(), (Values{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
  }
}

TEST_F(Recorder, WaitsForSetsByItselfWhereTheDriverIgnoresTheTime) {
  add_sets(3);
  ProgramStart start = this->start({"--color", "png", "--sets", "7"});
  start.executable = HALCYRA_RECORDER_IGNORING_TIMEOUT;
  EXPECT_EQ(run(start), 0) << errors_;
  expect_frames_of_the_source();
  expect_whole_sets(7);
}

TEST_F(Recorder, WritesJpegUnlessToldOtherwise) {
  add_sets(2);
  EXPECT_EQ(run({"--sets", "4"}), 0);
  EXPECT_TRUE(fs::exists(folder() / "color/000001.jpg"));
  EXPECT_TRUE(fs::exists(folder() / "ir/000001.tiff"));
  EXPECT_TRUE(fs::exists(folder() / "depth/000001.png"));
  EXPECT_EQ(played_sets(folder()).size(), 4U);
}

TEST_F(Recorder, KeepsGreyPicturesGrey) {
  add_sets(1);
  fs::remove_all(source_.folder() / "color");
  source_.add_color(cv::Mat(20, 30, CV_8UC1, cv::Scalar(77)));
  EXPECT_EQ(run({"--color", "png", "--sets", "2"}), 0);
  expect_frames_of_the_source();
}

TEST_F(Recorder, TellsWhoseRecordingItIs) {
  add_sets(1);
  source_.set_device("pace: 0\nserial: \"0123\\\"45\\\\6\"\nfirmware: \"4.0.3917.0\"\n");
  EXPECT_EQ(run({"--sets", "2"}), 0);
  EXPECT_EQ(device_of(folder()).serial, "0123\"45\\6");
  EXPECT_EQ(device_of(folder()).firmware, "4.0.3917.0");
}

TEST_F(Recorder, KeepsTheSerialNumberToItself) {
  add_sets(1);
  source_.set_device("pace: 0\nserial: \"0123456789\"\n");
  EXPECT_EQ(run({"--sets", "2", "--anonymous"}), 0);
  EXPECT_EQ(read_text(folder() / "device.yml").find("serial"), std::string::npos);
  EXPECT_EQ((output_ + errors_).find("0123456789"), std::string::npos);
}

TEST_F(Recorder, EndsAfterTheSecondsAskedFor) {
  add_sets(3);
  source_.set_device("pace: 20\n");
  EXPECT_EQ(run({"--seconds", "2", "--color", "png"}), 0) << errors_;
  expect_frames_of_the_source();
  const std::vector<TableRow> rows = table_of(folder());
  ASSERT_GT(rows.size(), 1U);
  EXPECT_LE(rows.back().seconds, 2.0);
  const double pace = static_cast<double>(rows.size() - 1) / rows.back().seconds;
  EXPECT_NEAR(device_of(folder()).pace, pace, 0.6);
  EXPECT_NE(output_.find("Recorded " + std::to_string(rows.size()) + " sets in "),
            std::string::npos)
      << output_;
  EXPECT_NE(output_.find(" in recorded.\n"), std::string::npos) << output_;
}

TEST_F(Recorder, CountsWhatTheSensorMissed) {
  add_sets(2);
  source_.set_device("pace: 0\ncounters: wrap\n");
  EXPECT_EQ(run({"--sets", "16"}), 0);
  EXPECT_NE(output_.find(" 0 dropped, 0 missed) in "), std::string::npos) << output_;
  EXPECT_EQ(recorded_numbers().front(), 0xFFFFFFF1U);
  EXPECT_EQ(recorded_numbers().back(), 0U);
}

TEST_F(Recorder, WritesOnlyTheStreamsAskedFor) {
  add_sets(2);
  EXPECT_EQ(run({"--sets", "3", "--streams", "depth,ir"}), 0);
  EXPECT_FALSE(fs::exists(folder() / "color"));
  EXPECT_EQ(files_of(folder(), "ir"), 3U);
  EXPECT_EQ(files_of(folder(), "depth"), 3U);
  EXPECT_NE(errors_.find("the virtual Kinect plays only all three"), std::string::npos) << errors_;
}

TEST_F(Recorder, MayRecordInAnEmptyFolder) {
  add_sets(1);
  fs::create_directory(folder());
  EXPECT_EQ(run({"--sets", "1"}), 0);
  expect_whole_sets(1);
}

// Tests that run in the background may have been started with SIGHUP ignored.
class RecorderSignal : public Recorder, public ::testing::WithParamInterface<int> {
 protected:
  RecorderSignal() { signal(GetParam(), SIG_DFL); }
};
INSTANTIATE_TEST_SUITE_P(Signals, RecorderSignal, ::testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_P(RecorderSignal, EndsARecordingInOrder) {
  add_sets(3);
  source_.set_device("pace: 120\n");
  Program program(stage_, start({"--color", "png"}));
  wait_for_sets(5);
  kill(program.id(), GetParam());
  const std::optional<ProcessEnd> end = program.wait_for_end();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->exit_status, 0) << program.errors();
  EXPECT_NE(program.output().find("Recorded "), std::string::npos);
  expect_frames_of_the_source();
  expect_whole_sets(table_of(folder()).size());
}

// The file of the next set may have its name in some streams, and its line may lack in the table.
TEST_F(Recorder, CanBePlayedAfterItWasKilled) {
  add_sets(3);
  source_.set_device("pace: 120\ncolor_format: RGBX\n");
  {
    Program program(stage_, start({"--color", "png"}));
    wait_for_sets(5);
    kill(program.id(), SIGKILL);
    program.wait_for_end();
  }
  EXPECT_EQ(device_of(folder()).color_format, libfreenect2::Frame::RGBX);
  const std::vector<PlayedSet> delivered = played_sets(source_.folder());
  const std::vector<PlayedSet> recorded = played_sets(folder());
  const std::vector<TableRow> rows = table_of(folder());
  EXPECT_GE(recorded.size(), rows.size());
  EXPECT_LE(recorded.size(), rows.size() + 1);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t stream = 0; stream < 3; ++stream) {
      EXPECT_TRUE(same_image(recorded[i].images[stream],
                             delivered[rows[i].sequences[stream] % 3].images[stream]));
    }
  }
}

TEST_F(Recorder, DoesNotNeedItsStandardStreams) {
  add_sets(3);
  int number = 0;
  for (const OddStreams& streams :
       {OddStreams{{0, 1, 2}}, OddStreams{{}, {1, 2}}, OddStreams{{}, {}, {1, 2}}}) {
    fs::remove_all(folder());
    ProgramStart start = this->start({"--color", "png", "--sets", "4"});
    start.streams = streams;
    EXPECT_EQ(run(start), 0) << number;
    expect_whole_sets(4);
    expect_frames_of_the_source();
    ++number;
  }
}

// Plays what was recorded by recording it again, and shows both to the dashboard.
TEST_F(Recorder, RecordedAgainIsTheSame) {
  add_sets(6);
  EXPECT_EQ(run({"--color", "png", "--sets", "6"}), 0) << errors_;
  const fs::path first = stage_.folder() / "first";
  fs::rename(folder(), first);
  write_text(first / "device.yml", "pace: 0\nafter: stall\n");
  ProgramStart again = start({"--color", "png", "--sets", "6"});
  again.environment["VIRTUAL_KINECT"] = first.string();
  EXPECT_EQ(run(again), 0) << errors_;
  const std::vector<PlayedSet> sets = played_sets(first);
  const std::vector<PlayedSet> sets_again = played_sets(folder());
  ASSERT_EQ(sets.size(), sets_again.size());
  for (std::size_t i = 0; i < sets.size(); ++i) {
    for (std::size_t stream = 0; stream < 3; ++stream) {
      EXPECT_TRUE(same_image(sets_again[i].images[stream], sets[i].images[stream]));
    }
  }
}

TEST_F(Recorder, OfTheRoomHoldsWhatTheRoomShows) {
  ProgramStart start = this->start({"--color", "png", "--sets", "5"});
  start.environment["VIRTUAL_KINECT"] = "room";
  ASSERT_EQ(run(start), 0) << errors_;
  const std::vector<PlayedSet> recorded = played_sets(folder());
  const std::vector<TableRow> rows = table_of(folder());
  ASSERT_EQ(recorded.size(), 5U);
  ASSERT_EQ(rows.size(), 5U);
  const virtual_kinect::FrameSource room = virtual_kinect::open_room();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t stream = 0; stream < 3; ++stream) {
      EXPECT_TRUE(same_image(recorded[i].images[stream],
                             room.image(room.streams[stream], rows[i].sequences[stream])))
          << "set " << i << ", stream " << stream;
    }
  }
}

// A recording of the room, and a recording of that one.
class RecordedRoom : public Recorder {
 protected:
  RecordedRoom() {
    ProgramStart start = this->start({"--color", "png", "--sets", "4"});
    start.environment["VIRTUAL_KINECT"] = "room";
    EXPECT_EQ(run(start), 0) << errors_;
    fs::rename(folder(), first());
    write_text(first() / "device.yml", "pace: 0\nafter: stall\n");
    start.environment["VIRTUAL_KINECT"] = first().string();
    EXPECT_EQ(run(start), 0) << errors_;
    write_text(folder() / "device.yml", "pace: 0\nafter: stall\n");
  }

  fs::path first() const { return stage_.folder() / "first"; }

  static ProgramStart dashboard_on(const fs::path& recording,
                                   const std::vector<std::string>& arguments) {
    ProgramStart start{arguments};
    start.environment["VIRTUAL_KINECT"] = recording.string();
    return start;
  }

  std::map<std::string, std::string> summary_of(const fs::path& recording) {
    EXPECT_EQ(run(dashboard_on(recording, {"--smoke", "--frames", "4"})), 0) << errors_;
    std::map<std::string, std::string> summary = summary_values(output_);
    summary.erase("fps");
    return summary;
  }
};

TEST_F(RecordedRoom, GivesTheDashboardTheSameCounters) {
  const auto summary = summary_of(first());
  EXPECT_EQ(summary.at("frames"), "4");
  EXPECT_EQ(summary_of(folder()), summary);
}

// The picture with the faces, and the infrared and depth pictures over it.
cv::Mat shown_pictures(DesktopRun& run) {
  Options options;
  options.width = kWidth;
  options.height = kHeight;
  const cv::Mat window = run.desktop().screenshot();
  if (window.size() != cv::Size(kWidth, kHeight)) return {};
  return window(dashboard_geometry(options).image_area).clone();
}

TEST_F(RecordedRoom, GivesTheDashboardTheSamePictures) {
  const ProgramStart on_first = dashboard_on(first(), in_readable_window({}));
  const ProgramStart on_second = dashboard_on(folder(), in_readable_window({}));
  DesktopRun first_run(stage_, on_first);
  DesktopRun second_run(stage_, on_second);
  // The owner stands in the room when it opens.
  ASSERT_TRUE(first_run.wait_for_message("Face detected: 1"));
  ASSERT_TRUE(second_run.wait_for_message("Face detected: 1"));
  EXPECT_TRUE(wait_until([&] {
    const cv::Mat pictures = shown_pictures(first_run);
    return !pictures.empty() && same_pixels(pictures, shown_pictures(second_run));
  }));
}

}  // namespace
}  // namespace halcyra
