// Measures what the real driver costs the program, one printed row for each figure. See
// bench/real-driver.
#include <chrono>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/real_driver/people.hpp"
#include "tests/real_driver/usb_sensor_run.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

class DriverCost : public UsbSensorRun {
 protected:
  DriverCost() { set_sensor("FPS", "30"); }

  static void print_row(const std::string& what, double value, const char* unit) {
    std::printf("| %s | %.2f %s |\n", what.c_str(), value, unit);
    std::fflush(stdout);
  }

  // Sets a second that somebody gets who does nothing with them.
  double rate_alone() { return std::stod(output_of_tool("count-sets", {"10"})); }

  double rate_of_program() {
    return std::stod(summary_of_usb_run({"--smoke", "--frames", "50"}).at("fps"));
  }

  // The mean of several key presses, from the press to its message in the window.
  double key_latency_ms() {
    constexpr int kPresses = 10;
    DesktopRun run(stage_, start_on_usb({}));
    EXPECT_TRUE(run.wait_for_message("Wide room scan active"));
    std::chrono::duration<double, std::milli> total(0);
    for (int press = 0; press < kPresses; ++press) {
      const char* const awaited =
          press % 2 == 0 ? "Debug boxes/detail enabled" : "Debug boxes/detail disabled";
      const auto begin = std::chrono::steady_clock::now();
      run.desktop().press("b");
      EXPECT_TRUE(run.wait_for_messages([&](const std::vector<std::string>& messages) {
        return !messages.empty() && messages.front() == awaited;
      }));
      total += std::chrono::steady_clock::now() - begin;
    }
    EXPECT_TRUE(run.quit());
    return total.count() / kPresses;
  }
};

TEST_F(DriverCost, SetsASecond) {
  for (const int count : {0, 2}) {
    const std::string scene = std::to_string(count) + " people";
    show({people(count)});
    const double alone = rate_alone();
    const double taken = rate_of_program();
    print_row(scene + ": sets that the driver delivers alone", alone, "/s");
    print_row(scene + ": sets that the program takes", taken, "/s");
    print_row(scene + ": sets fewer with the program", 100 * (1 - taken / alone), "%");
  }
}

TEST_F(DriverCost, Keys) {
  print_row("a key shows, frames coming", key_latency_ms(), "ms");
  set_sensor("STALL_AFTER", "30");
  print_row("a key shows, sensor stalled", key_latency_ms(), "ms");
}

}  // namespace
}  // namespace halcyra
