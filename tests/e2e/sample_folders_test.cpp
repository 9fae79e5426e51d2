// Samples folders with unusable files among the samples: the good ones are counted, the rest is
// ignored.
#include <signal.h>
#include <sys/stat.h>

#include <fstream>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/scenes.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class SampleFolders : public ::testing::Test {
 protected:
  fs::path place(const std::string& name) const {
    fs::path path = stage_.samples_folder() / name;
    fs::create_directories(path.parent_path());
    return path;
  }

  void add_good(const std::string& name) const {
    // OpenCV cannot write every file name, so the picture is written under a plain one and renamed.
    const fs::path draft = stage_.folder() / ("good" + fs::path(name).extension().string());
    ASSERT_TRUE(cv::imwrite(draft.string(), cv::Mat(8, 8, CV_8UC1, cv::Scalar(90))));
    fs::rename(draft, place(name));
  }

  void add_text(const std::string& name, const std::string& text) const {
    write_text(place(name), text);
  }

  ProgramStart start(const std::vector<std::string>& more) const {
    ProgramStart start{in_readable_window({"--no-camera"})};
    start.arguments.insert(start.arguments.end(), more.begin(), more.end());
    start.bound_by_modes = true;
    return start;
  }

  void expect_loaded(int count) {
    Program program(stage_, start({"--frames", "1"}));
    const std::optional<ProcessEnd> end = program.wait_for_end();
    ASSERT_TRUE(end);
    EXPECT_EQ(end->exit_status, 0) << program.errors();
    EXPECT_EQ(summary_values(program.output())["samples_loaded"], std::to_string(count));
  }

  Stage stage_;
};

TEST_F(SampleFolders, OfTenThousandFilesAreCountedRight) {
  add_good("front/good.pgm");
  for (int i = 0; i < 10000; ++i) {
    const std::string name = std::to_string(i % 100) + "/" + std::to_string(i) + ".pgm";
    if (i % 100 == 0) {
      fs::create_hard_link(place("front/good.pgm"), place(name));
    } else {
      std::ofstream(place(name)) << "P5 no picture";
    }
  }
  DesktopRun run(stage_, start({}));
  ExpectedDashboard scene = camera_less_scene("combo");
  scene.status.samples_loaded = true;
  const std::string message = "Dorran recognition samples loaded: 101";
  std::replace(scene.messages.begin(), scene.messages.end(),
               std::string("Recognition samples unavailable"), message);
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output())["samples_loaded"], "101");
}

// The contents of every supported kind of picture, cut off or changed.
TEST_F(SampleFolders, BrokenPicturesAreLeftOut) {
  for (const std::string type : {".png", ".jpg", ".jpeg", ".pgm"}) {
    add_good("whole" + type);
    const std::string whole = read_text(place("whole" + type));
    add_text("empty" + type, "");
    add_text("head-cut-off" + type, whole.substr(0, 6));
    add_text("other" + type, "<?xml version=\"1.0\"?>\n");
    add_text("zeros" + type, std::string(1000, '\0'));
    add_text("body-cut-off" + type, whole.substr(0, whole.size() - 10));
    add_text("head-changed" + type, "??" + whole.substr(2));
  }
  expect_loaded(4);
}

TEST_F(SampleFolders, SizesThatNoPictureHasAreLeftOut) {
  add_good("good.pgm");
  add_text("nothing.pgm", "P5\n0 0\n255\n");
  add_text("negative.pgm", "P5\n-5 5\n255\nxxxxx");
  add_text("too-wide.pgm", "P5\n1000001 10\n255\nxxxxx");
  add_text("no-number.pgm", "P5\n99999999999 99999999999\n255\nxxxxx");
  expect_loaded(1);
}

// OpenCV throws rather than allocate so much.
TEST_F(SampleFolders, SizeBeyondTheLibrarysLimitEndsTheRun) {
  add_text("too-large.pgm", "P5\n100000 100000\n255\nxxxxx");
  Program program(stage_, start({"--frames", "1"}));
  const std::optional<ProcessEnd> end = program.wait_for_end();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->signal, SIGABRT);
  EXPECT_EQ(program.output(), "");
  EXPECT_NE(program.errors().find("CV_IO_MAX_IMAGE_PIXELS"), std::string::npos);
}

TEST_F(SampleFolders, WhatIsNoReadableFileIsLeftOut) {
  add_good("good.png");
  add_good("unreadable.png");
  fs::permissions(place("unreadable.png"), fs::perms::none);
  fs::create_directories(place("folder.png/"));
  fs::create_symlink("nowhere.png", place("dangling.png"));
  fs::create_symlink("circle.png", place("circle.png"));
  fs::create_directory_symlink("..", place("deeper/round"));
  ASSERT_EQ(mkfifo(place("pipe.png").c_str(), 0600), 0);
  fs::create_symlink("/dev/zero", place("endless.png"));
  expect_loaded(1);
}

TEST_F(SampleFolders, NamesMayHoldAnyBytes) {
  for (const char* const name : {"a\nb.png", "\xff\xfe\xc3.png", " .png", "-.jpg", "%s%n.png",
                                 "'\"$(x)`.png", "\x01\x7f\t.pgm", "line\n/\xc3(/\n.jpg"}) {
    add_good(name);
  }
  DesktopRun run(stage_, start({}));
  run.expect_messages({"Dorran recognition samples loaded: 8"});
  EXPECT_TRUE(run.wait_for_message("Dorran recognition samples loaded: 8"));
  EXPECT_TRUE(run.quit());
}

TEST_F(SampleFolders, MayBeNestedDeep) {
  std::string name;
  for (int level = 0; level < 500; ++level) name += "level/";
  add_good(name + "good.png");
  add_good("good.png");
  expect_loaded(2);
}

TEST_F(SampleFolders, FolderThatCannotBeReadEndsTheRun) {
  add_good("good.png");
  add_good("closed/good.png");
  fs::permissions(place("closed"), fs::perms::none);
  Program program(stage_, start({"--frames", "1"}));
  const std::optional<ProcessEnd> end = program.wait_for_end();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->signal, SIGABRT);
  EXPECT_EQ(program.output(), "");
  EXPECT_NE(program.errors().find("filesystem error"), std::string::npos) << program.errors();
}

// Deeper than the longest path: a file there cannot be opened by its path.
TEST_F(SampleFolders, MayBeNestedDeeperThanAPathIsLong) {
  add_good("good.png");
  const fs::path before = fs::current_path();
  fs::current_path(stage_.samples_folder());
  const std::string level(200, 'x');
  for (int depth = 0; depth < 30; ++depth) {
    fs::create_directory(level);
    fs::current_path(level);
  }
  fs::copy_file(place("good.png"), "out-of-reach.png");
  fs::current_path(before);
  expect_loaded(1);
}

}  // namespace
}  // namespace halcyra
