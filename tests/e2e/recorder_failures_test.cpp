// What the recorder says and leaves when something is wrong.
#include <algorithm>

#include <gtest/gtest.h>

#include "tests/e2e/recorder_run.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class FailingRecorder : public RecorderRun {
 protected:
  // A run that must end with status 1 and this sentence. Only progress may be told before it.
  void expect_failure(const ProgramStart& start, const std::string& sentence) {
    EXPECT_EQ(run(start), 1);
    const std::size_t place = errors_.find("halcyra-record: ");
    EXPECT_EQ(errors_.substr(std::min(place, errors_.size())),
              "halcyra-record: " + sentence + "\n");
  }
  void expect_failure(const std::vector<std::string>& options, const std::string& sentence) {
    expect_failure(start(options), sentence);
  }

  void expect_nothing_recorded(const ProgramStart& start, const std::string& sentence) {
    expect_failure(start, sentence);
    EXPECT_EQ(output_, "");
    EXPECT_FALSE(fs::exists(folder()));
    fs::create_directory(folder());
    expect_failure(start, sentence);
    EXPECT_TRUE(fs::is_empty(folder()));
  }
};

TEST_F(FailingRecorder, SaysHowItIsUsed) {
  ProgramStart help{{"--help"}};
  help.executable = HALCYRA_RECORDER;
  EXPECT_EQ(run(help), 0);
  EXPECT_EQ(output_.rfind("Usage: halcyra-record FOLDER [OPTION]...\n", 0), 0U) << output_;
  EXPECT_EQ(errors_, "");
  const std::string usage = output_;
  EXPECT_EQ(run({"--sets", "many"}), 2);
  EXPECT_EQ(output_, "");
  EXPECT_EQ(
      errors_,
      "halcyra-record: --sets must be a whole number from 1 to 999999, not \"many\"\n" + usage);
  EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(FailingRecorder, SaysItsVersion) {
  ProgramStart version{{"--version"}};
  version.executable = HALCYRA_RECORDER;
  EXPECT_EQ(run(version), 0);
  EXPECT_EQ(output_, "halcyra-record " HALCYRA_VERSION "\n");
}

// The sensor is not asked: it would complain about the scene.
TEST_F(FailingRecorder, LooksAtTheFolderFirst) {
  ProgramStart start = this->start({});
  start.environment["VIRTUAL_KINECT"] = "no such scene";
  write_text(folder() / "mine", "mine");
  expect_failure(start, "\"recorded\" is not empty");
  EXPECT_EQ(read_text(folder() / "mine"), "mine");
  fs::remove_all(folder());
  write_text(folder(), "mine");
  expect_failure(start, "\"recorded\" is not a folder");
  start.arguments = {"deep/recorded"};
  expect_failure(start, "cannot make the folder \"deep/recorded\": No such file or directory");
}

TEST_F(FailingRecorder, SaysThatItMayNotWrite) {
  ProgramStart start = this->start({});
  start.bound_by_modes = true;
  fs::create_directory(folder());
  fs::permissions(folder(), fs::perms::owner_read | fs::perms::owner_exec);
  expect_failure(start, "cannot write to the folder \"recorded\": Permission denied");
  start.arguments = {"recorded/inner"};
  expect_failure(start, "cannot make the folder \"recorded/inner\": Permission denied");
  fs::permissions(folder(), fs::perms::owner_all);
  EXPECT_TRUE(fs::is_empty(folder()));
}

TEST_F(FailingRecorder, SaysThatThereIsNoSensor) {
  ProgramStart start = this->start({});
  start.environment["VIRTUAL_KINECT"] = "";
  expect_nothing_recorded(start, "no Kinect v2 device detected");
}

TEST_F(FailingRecorder, SaysThatTheSensorCannotBeOpened) {
  add_sets(1);
  source_.set_device("open: fail\n");
  expect_nothing_recorded(start({}), "failed to open Kinect device");
}

TEST_F(FailingRecorder, SaysThatTheStreamsDoNotStart) {
  add_sets(1);
  source_.set_device("start: fail\n");
  expect_nothing_recorded(start({}), "failed to start RGB/IR/Depth streams");
}

TEST_F(FailingRecorder, LeavesNothingOfASensorThatNeverDelivers) {
  source_.add_color(cv::Mat(2, 2, CV_8UC3, cv::Scalar::all(1)));
  expect_nothing_recorded(start({}), "the sensor delivers no complete set");
}

TEST_F(FailingRecorder, KeepsWhatCameBeforeTheSensorStopped) {
  add_sets(4);
  for (const std::string after : {"stall", "unplug"}) {
    source_.set_device("pace: 0\nafter: " + after + "\n");
    fs::remove_all(folder());
    expect_failure({"--color", "png"}, "the sensor has stopped delivering complete sets");
    EXPECT_EQ(output_.rfind("Recorded 4 sets in ", 0), 0U) << output_;
    EXPECT_EQ(table_of(folder()).size(), 4U);
    expect_frames_of_the_source();
  }
}

TEST_F(FailingRecorder, OutlivesAPause) {
  add_sets(3);
  source_.set_device("pace: 0\nafter: pause\n");
  EXPECT_EQ(run({"--color", "png", "--sets", "8"}), 0) << errors_;
  EXPECT_EQ(table_of(folder()).size(), 8U);
  EXPECT_GT(table_of(folder()).back().seconds, 4.9);  // two pauses
  expect_frames_of_the_source();
}

// A set may then consist of frames that did not belong together.
TEST_F(FailingRecorder, KeepsTheSetsThatGetComplete) {
  add_sets(5);
  source_.set_device("pace: 30\ndrop: 40\n");
  EXPECT_EQ(run({"--color", "png", "--sets", "12"}), 0) << errors_;
  EXPECT_EQ(table_of(folder()).size(), 12U);
  expect_frames_of_the_source();
}

// In turn: no data, no width, no height, two bytes per pixel, arbitrary pixels.
TEST_F(FailingRecorder, KeepsThePlaceOfDamagedFrames) {
  add_sets(5);
  source_.set_device("pace: 0\ncorrupt: 100\n");
  EXPECT_EQ(run({"--color", "png", "--sets", "10"}), 0) << errors_;
  const std::vector<PlayedSet> sets = played_sets(folder());
  ASSERT_EQ(sets.size(), 10U);
  for (std::size_t i = 0; i < sets.size(); ++i) {
    for (const virtual_kinect::StreamImage& image : sets[i].images) {
      EXPECT_EQ(image.pixels.empty(), i % 5 != 4) << "set " << i;
    }
  }
  EXPECT_EQ(fs::file_size(folder() / "color/000001.png"), 0U);
}

// The commands of /bin/sh, with the recorder and its folder in place of $recorder and $folder.
class RecorderInShell : public FailingRecorder {
 protected:
  ProgramStart in_shell(const std::string& commands) const {
    ProgramStart start = this->start({});
    start.executable = "/bin/sh";
    start.arguments = {"-c", commands};
    start.environment["PATH"] = "/usr/sbin:/usr/bin:/sbin:/bin";
    start.environment["recorder"] = HALCYRA_RECORDER;
    return start;
  }

  // The same where "disk" is an empty disk of its own with the given limits. What is recorded in
  // disk/recorded is copied out.
  ProgramStart on_own_disk(const std::string& limits, const std::string& commands) const {
    const std::string script = "mkdir disk; mount -t tmpfs -o " + limits +
                               " none disk || exit 77;" + commands + "; status=$?;" +
                               "cp -r disk/recorded . 2>cp-errors; umount disk; exit $status";
    write_text(stage_.working_folder() / "script", script);
    return in_shell(
        "unshare --map-root-user --mount true 2>unshare-errors || exit 77;"
        "exec unshare --map-root-user --mount sh script");
  }

  static constexpr int kNoDisk = 77;
};

TEST_F(RecorderInShell, StopsAtTheLimitOfFileSizes) {
  add_sets(1);
  expect_failure(in_shell("ulimit -f 2; exec \"$recorder\" recorded --color png"),
                 "cannot write to \"recorded\": File too large");
  EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(RecorderInShell, NeedsRoomBeforeItAsksTheSensor) {
  const int status =
      run(on_own_disk("size=100m", "VIRTUAL_KINECT='no such scene' \"$recorder\" disk/recorded"));
  if (status == kNoDisk) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(status, 1);
  EXPECT_EQ(errors_,
            "halcyra-record: only 105 MB are free, and a recording needs at least 537 MB\n");
  EXPECT_FALSE(fs::exists(folder()));
}

TEST_F(RecorderInShell, NeedsRoomForWhatIsAskedFor) {
  const int status = run(on_own_disk("size=600m", "\"$recorder\" disk/recorded --seconds 3600"));
  if (status == kNoDisk) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(status, 1);
  EXPECT_NE(errors_.find("this recording may take"), std::string::npos) << errors_;
}

// The disk has room for bytes, but for no more than 30 files and folders.
TEST_F(RecorderInShell, KeepsWhatFittedOnTheDisk) {
  add_sets(5);
  const int status =
      run(on_own_disk("size=1g,nr_inodes=30", "\"$recorder\" disk/recorded --color png"));
  if (status == kNoDisk) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(status, 1);
  EXPECT_EQ(errors_,
            "halcyra-record: cannot write to \"disk/recorded\": No space left on device\n");
  EXPECT_GE(table_of(folder()).size(), 5U);
  for (const char* const stream : {"color", "ir", "depth"}) {
    EXPECT_EQ(files_of(folder(), stream), table_of(folder()).size()) << stream;
  }
  expect_frames_of_the_source();
}

// The disk shrinks below the reserve once something is recorded.
TEST_F(RecorderInShell, LeavesAReserveOnTheDisk) {
  add_sets(5);
  source_.set_device("pace: 30\n");
  const int status = run(on_own_disk(
      "size=1g",
      "\"$recorder\" disk/recorded --color png & until [ -e disk/recorded/depth/000003.png ]; do "
      "sleep 0.05; done; mount -o remount,size=200m disk; wait $!"));
  if (status == kNoDisk) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(status, 1);
  EXPECT_EQ(errors_.rfind("halcyra-record: the disk is nearly full: only ", 0), 0U) << errors_;
  EXPECT_GE(table_of(folder()).size(), 3U);
  expect_frames_of_the_source();
}

}  // namespace
}  // namespace halcyra
