// A window that is closed, moved, resized, hidden and typed into in random order.
#include <algorithm>
#include <chrono>
#include <random>
#include <set>
#include <thread>

#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/e2e/window_manager.hpp"

namespace halcyra {
namespace {

// Keys of every command except quit, and some without a command.
const std::vector<std::string> kKeys = {"1", "2", "3",   "4",  "5", "6", "7",     "i",   "d", "a",
                                        "o", "f", "b",   "m",  "v", "k", "t",     "x",   "z", "I",
                                        "V", "M", "Tab", "F5", "0", "p", "space", "Left"};

const std::vector<cv::Size> kSizes = {{40, 30},    {800, 480},   {799, 480},   {800, 479},
                                      {300, 900},  {1000, 600},  {1440, 1080}, {1920, 1080},
                                      {2560, 700}, {3840, 2160}, {1001, 701},  {640, 360}};

// A user whose steps are random but determined by the seed.
class RestlessUser {
 public:
  RestlessUser(XDesktop& desktop, unsigned seed) : desktop_(desktop), random_(seed) {}

  // Types 30 keys a second, and handles the window with every third. Goes on where the window is
  // too slow to follow, until it has followed now and then.
  void work(int steps) {
    for (int step = 0; step < steps || (!has_seen_enough() && step < 10 * steps); ++step) {
      type();
      if (step % 3 == 0) {
        desktop_.follow_window();
        look();
        handle_window();
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(33));
    }
    let_go();
  }

  // Whether the window was seen in several sizes and was hidden several times.
  bool has_seen_enough() const { return areas_.size() > 5 && times_missed_ > 5; }

 private:
  void look() {
    if (desktop_.window_shown()) {
      areas_.insert(desktop_.window_size().area());
    } else {
      ++times_missed_;
    }
  }

  int choice(std::size_t count) {
    return static_cast<int>(random_() % static_cast<unsigned>(count));
  }

  void type() {
    const std::string& key = kKeys[static_cast<std::size_t>(choice(kKeys.size()))];
    if (key.size() == 1 && choice(15) == 0) {
      let_go();
      held_ = key;
      desktop_.hold(held_);
    } else {
      desktop_.press(key);
    }
  }

  void let_go() {
    if (!held_.empty()) desktop_.let_go(held_);
    held_.clear();
  }

  void handle_window() {
    switch (choice(8)) {
      case 0:
        return desktop_.ask_to_close();
      case 1:
        return desktop_.move({choice(4000) - 200, choice(2300) - 100});
      case 2:
        return desktop_.set_fullscreen(true);
      case 3:
        return desktop_.set_fullscreen(false);
      case 4:
        return desktop_.minimise();
      case 5:
        return desktop_.bring_back();
      default:
        return desktop_.resize(kSizes[static_cast<std::size_t>(choice(kSizes.size()))]);
    }
  }

  XDesktop& desktop_;
  std::mt19937 random_;
  std::string held_;
  std::set<int> areas_;
  int times_missed_ = 0;
};

class RestlessWindow : public SensorRun {
 protected:
  // Brings the window back to its size at the start, and wholly onto the screen, as no picture can
  // be taken of it elsewhere. False: it does not come.
  static bool settled(XDesktop& desktop) {
    return wait_until([&desktop] {
      if (!desktop.follow_window()) return false;
      desktop.set_fullscreen(false);
      desktop.bring_back();
      desktop.resize({kWidth, kHeight});
      desktop.move({100, 100});
      return desktop.window_shown() && desktop.window_size() == cv::Size(kWidth, kHeight);
    });
  }

  // Refreshes until the log shows nothing else, so that the next message is recognisably new.
  static void clear_log(DesktopRun& run) {
    const std::vector<std::string> cleared(11, "Status refreshed");
    EXPECT_TRUE(wait_until([&] {
      run.desktop().press("v");
      return run.messages() == cleared;
    })) << ::testing::PrintToString(run.messages());
  }

  // The random keys may have left it on or off.
  static void switch_microphone_on(DesktopRun& run) {
    const std::string on = "Mic HUD enabled";
    const std::string off = "Mic HUD disabled";
    bool is_on = false;
    run.desktop().press("m");
    EXPECT_TRUE(run.wait_for_messages([&](const std::vector<std::string>& messages) {
      is_on = std::find(messages.begin(), messages.end(), on) != messages.end();
      return is_on || std::find(messages.begin(), messages.end(), off) != messages.end();
    }));
    if (!is_on) {
      run.desktop().press("m");
      EXPECT_TRUE(run.wait_for_message(on));
    }
  }

  // After the random steps a few keys must lead to exactly this scene, its log full of refreshes.
  static void expect_scene_after_work(DesktopRun& run, ExpectedDashboard scene, int steps) {
    RestlessUser user(run.desktop(), 20240229);
    user.work(steps);
    EXPECT_TRUE(user.has_seen_enough());
    ASSERT_TRUE(run.program().running());
    ASSERT_TRUE(settled(run.desktop()));
    ASSERT_TRUE(run.desktop().find_window());
    clear_log(run);
    switch_microphone_on(run);
    run.desktop().press("5");
    EXPECT_TRUE(run.wait_for_message("Current view: COMBO"));
    scene.messages.assign(11, "Status refreshed");
    scene.from = run.started();
    std::string last_difference;
    EXPECT_TRUE(wait_until([&] {
      run.desktop().press("v");
      last_difference = difference(run.desktop().screenshot(), scene);
      return last_difference.empty();
    })) << last_difference;
    EXPECT_TRUE(run.quit()) << run.program().errors();
  }

  XServer server_{4000, 2300};
  WindowManager manager_{server_, stage_};
};

ProgramStart on_large_screen(Stage& stage, ProgramStart start) {
  stage.answer("xrandr --current", "screen connected primary 4000x2300+0+0\n");
  return start;
}

TEST_F(RestlessWindow, WithoutSensorIsRightInTheEnd) {
  DesktopRun run(stage_, server_, on_large_screen(stage_, start({"--no-camera"})));
  ASSERT_EQ(run.wait_for(camera_less_scene("combo")), "");
  expect_scene_after_work(run, camera_less_scene("combo"), 600);
}

TEST_F(RestlessWindow, OfARunningSensorIsRightInTheEnd) {
  add_good_sets(3);
  DesktopRun run(stage_, server_, on_large_screen(stage_, start({})));
  ASSERT_EQ(run.wait_for(running_scene("combo")), "");
  expect_scene_after_work(run, running_scene("combo"), 300);
}

}  // namespace
}  // namespace halcyra
