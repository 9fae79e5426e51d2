// Faulty state files of the voice service, and faulty home folders.
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/scenes.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

const std::string kHeard = "{\"direction_angle_degrees\": 30, \"direction_confidence\": 0.9}\n";

void hear(ExpectedDashboard& scene, const std::string& angle, const std::string& match) {
  scene.status.voice.direction_angle = angle;
  scene.status.voice.direction_confidence = "0.9";
  scene.status.room.voice_match = match;
}

ProgramStart camera_less_start() {
  ProgramStart start{in_readable_window({"--no-camera"})};
  start.bound_by_modes = true;
  return start;
}

class StateFiles : public ::testing::Test {
 protected:
  StateFiles() { fs::create_directories(state_folder()); }

  fs::path state_folder() const { return stage_.event_file().parent_path(); }
  fs::path recording() const { return state_folder() / "first-run-beamformed.wav"; }

  // Presses the refresh key and adds to the scene what that logs: the key's message, then the
  // room's.
  static void refresh(DesktopRun& run, ExpectedDashboard& scene, const std::string& room = "") {
    run.desktop().press("v");
    log_message(scene, "Status refreshed");
    if (!room.empty()) log_message(scene, room);
  }

  Stage stage_;
};

struct FileFault {
  std::string name;
  std::function<void(const fs::path& file)> inflict;
};

void PrintTo(const FileFault& fault, std::ostream* stream) { *stream << fault.name; }

void make_unreadable(const fs::path& file) {
  write_text(file, kHeard);
  fs::permissions(file, fs::perms::none);
}

void make_pipe(const fs::path& file) {
  if (mkfifo(file.c_str(), 0600) != 0) throw std::runtime_error("cannot make a pipe");
}

void make_circle(const fs::path& file) {
  fs::path other = file;
  other += ".other";
  fs::create_symlink(other, file);
  fs::create_symlink(file, other);
}

std::string file_fault_name(const ::testing::TestParamInfo<FileFault>& info) {
  return info.param.name;
}

std::vector<FileFault> file_faults() {
  return {{"Missing", [](const fs::path&) {}},
          {"Empty", [](const fs::path& file) { write_text(file, ""); }},
          {"Unreadable", make_unreadable},
          {"Folder", [](const fs::path& file) { fs::create_directories(file / "inside"); }},
          {"DanglingLink", [](const fs::path& file) { fs::create_symlink("nowhere", file); }},
          {"CircleOfLinks", make_circle},
          {"Pipe", make_pipe},
          {"EndlessDevice", [](const fs::path& file) { fs::create_symlink("/dev/zero", file); }},
          {"Sparse", [](const fs::path& file) {
             write_text(file, "{");
             fs::resize_file(file, 100U << 20U);
           }}};
}

class FaultyStateFiles : public StateFiles, public ::testing::WithParamInterface<FileFault> {};

INSTANTIATE_TEST_SUITE_P(Faults, FaultyStateFiles, ::testing::ValuesIn(file_faults()),
                         file_fault_name);

TEST_P(FaultyStateFiles, AreNoDirectionUntilAGoodOneComes) {
  GetParam().inflict(stage_.event_file());
  GetParam().inflict(recording());
  DesktopRun run(stage_, camera_less_start());
  ExpectedDashboard scene = camera_less_scene("combo");
  EXPECT_EQ(run.wait_for(scene), "");

  fs::remove_all(stage_.event_file());
  stage_.write_event_file(kHeard);
  hear(scene, "30", "unmatched voice right");
  refresh(run, scene, "unmatched voice right");
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

TEST_F(StateFiles, StateFolderThatIsAFile) {
  fs::remove_all(state_folder());
  write_text(state_folder(), "in the way");
  DesktopRun run(stage_, camera_less_start());
  ExpectedDashboard scene = camera_less_scene("combo");
  EXPECT_EQ(run.wait_for(scene), "");
  refresh(run, scene);
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

TEST_F(StateFiles, StateFolderThatCannotBeEntered) {
  stage_.write_event_file(kHeard);
  fs::permissions(state_folder(), fs::perms::none);
  DesktopRun run(stage_, camera_less_start());
  ExpectedDashboard scene = camera_less_scene("combo");
  EXPECT_EQ(run.wait_for(scene), "");
  fs::permissions(state_folder(), fs::perms::owner_all);
  hear(scene, "30", "unmatched voice right");
  refresh(run, scene, "unmatched voice right");
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

TEST_F(StateFiles, DirectionBehindAHundredMegabytesIsFound) {
  stage_.write_event_file("{");
  fs::resize_file(stage_.event_file(), 100U << 20U);
  std::ofstream(stage_.event_file(), std::ios::binary | std::ios::app) << kHeard;
  DesktopRun run(stage_, camera_less_start());
  ExpectedDashboard scene = camera_less_scene("combo");
  hear(scene, "30", "unmatched voice right");
  log_message(scene, "unmatched voice right");
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

// Replaces a file by one text after the other, each in one step, until it is destroyed.
class RestlessWriter {
 public:
  RestlessWriter(const fs::path& file, const std::vector<std::string>& texts)
      : thread_([this, file, texts] {
          while (!stop_) write_text(file, texts[written_++ % texts.size()]);
        }) {}
  RestlessWriter(const RestlessWriter&) = delete;
  RestlessWriter& operator=(const RestlessWriter&) = delete;
  ~RestlessWriter() {
    stop_ = true;
    thread_.join();
  }

  std::size_t written() const { return written_; }

 private:
  std::atomic<bool> stop_{false};
  std::atomic<std::size_t> written_{0};
  std::thread thread_;
};

bool all_known(const std::vector<std::string>& messages) {
  return std::find(messages.begin(), messages.end(), kUnreadableLine) == messages.end();
}

// Every direction that is logged is one of the two, never a mixture.
TEST_F(StateFiles, ReplacedWhileReadAreReadWhole) {
  const std::string padding(200000, ' ');
  const std::string left =
      "{\"direction_angle_degrees\": -30," + padding + "\"direction_confidence\": 0.9}\n";
  const std::string right =
      "{\"direction_angle_degrees\": 30," + padding + "\"direction_confidence\": 0.2}\n";
  stage_.write_event_file(left);
  DesktopRun run(stage_, camera_less_start());
  ASSERT_TRUE(run.wait_for_message("Wide room scan active"));
  run.expect_messages({"unmatched voice left", "low confidence right"});
  const std::size_t calls_before = stage_.calls().size();
  {
    const RestlessWriter writer(stage_.event_file(), {left, right});
    for (int refresh = 0; refresh < 40; ++refresh) {
      run.desktop().press("v");
      const std::size_t calls = calls_before + 4U * static_cast<std::size_t>(refresh + 1);
      ASSERT_TRUE(wait_until([&] { return stage_.calls().size() >= calls; }));
      // The log keeps 11 lines, and a refresh logs at most two.
      if (refresh % 5 != 4) continue;
      ASSERT_TRUE(run.wait_for_messages(all_known)) << ::testing::PrintToString(run.messages());
    }
    EXPECT_GT(writer.written(), 80U);
  }
  stage_.write_event_file(left);
  run.desktop().press("v");
  ExpectedDashboard scene = camera_less_scene("combo");
  hear(scene, "-30", "unmatched voice left");
  EXPECT_TRUE(wait_until([&] {
    scene.messages = run.messages();
    scene.from = run.started();
    return difference(run.desktop().screenshot(), scene).empty();
  }));
  EXPECT_TRUE(run.quit());
}

struct HomeFault {
  std::string name;
  std::function<void(Stage& stage, ProgramStart& start)> inflict;
};

void PrintTo(const HomeFault& fault, std::ostream* stream) { *stream << fault.name; }

std::string home_fault_name(const ::testing::TestParamInfo<HomeFault>& info) {
  return info.param.name;
}

std::vector<HomeFault> home_faults() {
  const auto at = [](const std::string& home) {
    return [home](Stage&, ProgramStart& start) { start.environment["HOME"] = home; };
  };
  return {{"Unset", [](Stage&, ProgramStart& start) { start.unset = {"HOME"}; }},
          {"Empty", at("")},
          {"NotThere", at("/no/such/home")},
          {"AFile", at("/etc/passwd")},
          {"VeryLong", at("/" + std::string(5000, 'h'))},
          {"VeryDeep",
           [](Stage&, ProgramStart& start) {
             for (int level = 0; level < 2500; ++level) start.environment["HOME"] += "/h";
           }},
          {"NoText", at("/\xff\n\x01")},
          {"Unwritable", [](Stage& stage, ProgramStart&) {
             fs::permissions(stage.home(), fs::perms::owner_read | fs::perms::owner_exec);
           }}};
}

class FaultyHome : public ::testing::TestWithParam<HomeFault> {};

INSTANTIATE_TEST_SUITE_P(Faults, FaultyHome, ::testing::ValuesIn(home_faults()), home_fault_name);

TEST_P(FaultyHome, IsNoDirection) {
  Stage stage;
  ProgramStart start = camera_less_start();
  GetParam().inflict(stage, start);
  DesktopRun run(stage, start);
  EXPECT_EQ(run.wait_for(camera_less_scene("combo")), "");
  EXPECT_TRUE(run.quit());
}

}  // namespace
}  // namespace halcyra
