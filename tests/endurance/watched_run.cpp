#include "tests/endurance/watched_run.hpp"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <thread>
#include <vector>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/endurance/resource_record.hpp"
#include "tests/endurance/small_recording.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kTurn(100);
constexpr std::size_t kTurnsForAKey = 13;
constexpr int kLeastPeriods = 10;
constexpr std::size_t kLeastSamplesForMemory = 3000;  // five minutes

// The first pictures start threads and fill caches: ten seconds are left out, less of a short run.
constexpr std::size_t kWarmUpSamples = 100;
constexpr std::size_t kWarmUpShare = 3;

void press_one_of_all(XDesktop& desktop, std::size_t turn) {
  static const std::vector<std::string> kKeys = {"1", "2", "3",   "4", "5", "6", "7", "b",
                                                 "m", "v", "Tab", "b", "m", "x", "z", "5"};
  if (turn % kTurnsForAKey == 0) desktop.press(kKeys[turn / kTurnsForAKey % kKeys.size()]);
}

// Takes samples and presses keys until the run has ended or `enough` holds.
std::vector<ProcessResources> watch(DesktopRun& run, const std::function<bool()>& enough) {
  std::vector<ProcessResources> samples;
  for (std::size_t turn = 1; run.program().running() && !enough(); ++turn) {
    const std::optional<ProcessResources> resources = read_resources(run.program().id());
    if (resources) samples.push_back(*resources);
    press_one_of_all(run.desktop(), turn);
    std::this_thread::sleep_for(kTurn);
  }
  const std::size_t warm = std::min(kWarmUpSamples, samples.size() / kWarmUpShare);
  samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(warm));
  return samples;
}

// Prints how the run went. False: it failed.
bool judge(DesktopRun& run, bool ended_well, const std::vector<ProcessResources>& samples,
           int period_count) {
  const std::vector<ResourcePeriod> periods = periods_of(samples, period_count);
  const bool long_enough = samples.size() >= kLeastSamplesForMemory;
  const std::string grown = growth(periods, long_enough ? Memory::kCompared : Memory::kLeftOut);
  std::cout << table_of(periods) << grown << summary_line(run.program().output());
  if (!ended_well) std::cout << "did not end well\n" << run.program().errors();
  std::cout << std::flush;
  return ended_well && grown.empty();
}

}  // namespace

bool survives_cycles(const std::string& program, int cycles) {
  const Stage stage;
  const Recording recording = write_small_recording(stage.folder() / "recording");
  write_owner_samples(stage.samples_folder());
  ProgramStart start{
      {"--smoke", "--width", "800", "--height", "480", "--frames", std::to_string(cycles)},
      "",
      {{"VIRTUAL_KINECT", recording.folder().string()}},
      program};
  DesktopRun run(stage, start);
  const std::vector<ProcessResources> samples = watch(run, [] { return false; });
  const std::optional<ProcessEnd> end = run.program().wait_for_end();
  const bool complete = summary_values(run.program().output())["frames"] == std::to_string(cycles);
  return judge(run, end && end->exit_status == 0 && complete, samples, kLeastPeriods);
}

bool survives_demonstration(const std::string& demonstration, std::chrono::seconds duration) {
  const Stage stage;
  const fs::path folder = stage.folder() / "demonstration";
  fs::copy(demonstration, folder, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  const ProgramStart start{
      {folder.string()}, "", {{"PATH", "/usr/bin:/bin"}}, HALCYRA_DEMO "/demonstrate"};
  DesktopRun run(stage, start);
  const Clock::time_point end = Clock::now() + duration;
  const std::vector<ProcessResources> samples = watch(run, [end] { return Clock::now() > end; });
  const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(duration).count();
  return judge(run, run.quit(), samples, std::max(kLeastPeriods, static_cast<int>(minutes)));
}

}  // namespace halcyra
