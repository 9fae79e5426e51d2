// What a whole cycle without the window would take on more cores, and what bounds it. Prints two
// tables for each scene; takes some minutes.
//
// The cycle runs on one thread, while a recorder in the place of OpenCV's threads notes how long
// each task of each parallel loop takes (section_recorder.hpp). A simulation deals the tasks out to
// 1, 2, 4, 8 and 16 cores (scaling_model.hpp). Beside it stands what the cycle takes with real
// threads, for as many cores as the machine has; it shows how far the simulation can be believed.
//
// Of every task, serial stretch and measured cycle, the shortest time of all repetitions counts. On
// a busy machine a whole cycle is rarely undisturbed, so the sum of the shortest tasks is below the
// shortest cycle. For comparison, the shortest recorded cycle is printed as well.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <opencv2/core/utility.hpp>
#include <opencv2/core/version.hpp>

#include "bench/measured_cycle.hpp"
#include "bench/recorded_frames.hpp"
#include "bench/scaling_model.hpp"
#include "bench/section_recorder.hpp"

namespace halcyra {
namespace {

constexpr std::array<int, 5> kCores = {1, 2, 4, 8, 16};
constexpr int kMostCores = kCores.back();
constexpr int kRepetitions = 25;

// In a row with the same threads, as the first turn after a change wakes them.
constexpr int kTurnsInARow = 3;

struct Measurement {
  std::map<int, double> measured;   // by the number of threads: the shortest turn, in milliseconds
  std::map<int, RecordedRun> runs;  // by the number of cores that OpenCV was told
  double shortest_recorded = std::numeric_limits<double>::infinity();  // of whole turns
  std::vector<std::string> section_names;
  bool steady = true;  // all turns had the same sections and tasks
};

void use_threads(int threads) {
  cv::parallel::setParallelForBackend(std::shared_ptr<cv::parallel::ParallelForAPI>(), false);
  cv::setNumThreads(threads);
}

void use_recorder(const std::shared_ptr<SectionRecorder>& recorder) {
  use_threads(2);  // with 1, no loop would be cut
  cv::parallel::setParallelForBackend(recorder, false);
}

double timed_turn(MeasuredCycle& cycle) {
  cycle.feed();
  const auto start = std::chrono::steady_clock::now();
  cycle.take_turn();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

void measure_threads(MeasuredCycle& cycle, Measurement& result) {
  for (const int cores : kCores) {
    if (cores > cv::getNumberOfCPUs()) continue;
    use_threads(cores);
    double& shortest =
        result.measured.emplace(cores, std::numeric_limits<double>::infinity()).first->second;
    for (int i = 0; i < kTurnsInARow; ++i) shortest = std::min(shortest, timed_turn(cycle));
  }
}

void record_tasks(MeasuredCycle& cycle, SectionRecorder& recorder, Measurement& result) {
  for (const int cores : kCores) {
    cycle.feed();
    recorder.start(cores);
    cycle.take_turn();
    const RecordedRun run = recorder.stop();
    result.shortest_recorded = std::min(result.shortest_recorded, run_on(run, 1).total());
    RecordedRun& shortest = result.runs.emplace(cores, run).first->second;
    result.steady = keep_shortest(shortest, run) && result.steady;
  }
}

std::vector<std::string> names_of_sections(MeasuredCycle& cycle, SectionRecorder& recorder) {
  cycle.feed();
  recorder.start_naming(kMostCores);
  cycle.take_turn();
  return recorder.stop_naming();
}

Measurement measure(const RecordedFrames& frames) {
  MeasuredCycle cycle(frames, Cascades::kOwn);
  const auto recorder = std::make_shared<SectionRecorder>();
  Measurement result;
  for (int i = 0; i < kRepetitions; ++i) {
    measure_threads(cycle, result);
    use_recorder(recorder);
    timed_turn(cycle);
    record_tasks(cycle, *recorder, result);
  }
  result.section_names = names_of_sections(cycle, *recorder);
  return result;
}

std::string bound_of(const ScaledRun& run) {
  const std::array<std::pair<double, const char*>, 4> parts = {{{run.shared, "cores"},
                                                                {run.serial, "serial part"},
                                                                {run.longest_task, "longest tasks"},
                                                                {run.uneven_end, "uneven ends"}}};
  return std::max_element(parts.begin(), parts.end())->second;
}

void print_cores(const Measurement& result) {
  std::cout << "| cores | ms a cycle | measured, ms | speed-up | serial, ms | serial share "
               "| tasks shared evenly, ms | longest tasks, ms | uneven ends, ms | bound |\n"
               "|---:|---:|---:|---:|---:|---:|---:|---:|---:|---|\n";
  const double alone = run_on(result.runs.at(1), 1).total();
  for (const int cores : kCores) {
    const ScaledRun run = run_on(result.runs.at(cores), cores);
    const auto measured = result.measured.find(cores);
    std::cout << "| " << cores << " | " << run.total() << " | ";
    if (measured != result.measured.end()) std::cout << measured->second << " ";
    std::cout << "| " << alone / run.total() << " | " << run.serial << " | " << std::setprecision(0)
              << 100 * run.serial / run.total() << " % | " << std::setprecision(2) << run.shared
              << " | " << run.longest_task << " | " << run.uneven_end << " | " << bound_of(run)
              << " |\n";
  }
  std::cout << "\nHowever many cores: " << least_time(result.runs.at(kMostCores))
            << " ms. The shortest recorded cycle: " << result.shortest_recorded << " ms.\n\n";
}

void print_sections(const Measurement& result) {
  std::cout << "| section | serial before it, ms | tasks | ms on 1 core | longest task, ms | ms on "
            << kMostCores << " cores |\n|---|---:|---:|---:|---:|---:|\n";
  const RecordedRun& run = result.runs.at(kMostCores);
  for (std::size_t i = 0; i < run.sections.size(); ++i) {
    const Section& section = run.sections[i];
    std::cout << "| " << result.section_names[i] << " | " << section.serial_before << " | "
              << section.tasks.size() << " | " << sum_of_tasks(section) << " | "
              << longest_task(section) << " | " << section_on(section, kMostCores) << " |\n";
  }
  std::cout << "| end of the cycle | " << run.serial_after << " | | | | |\n\n";
}

bool print_scene(const NamedFrames& scene) {
  const Measurement result = measure(scene.frames);
  if (!result.steady || result.section_names.size() != result.runs.at(kMostCores).sections.size()) {
    std::cerr << scene.name << ": the turns do not have the same tasks\n";
    return false;
  }
  std::cout << scene.name << "\n\n" << std::fixed << std::setprecision(2);
  print_cores(result);
  print_sections(result);
  return true;
}

int print_scaling() {
  std::cout << "OpenCV " CV_VERSION ", measured on " << cv::getNumberOfCPUs() << " cores.\n\n";
  for (const NamedFrames& scene : measured_frames()) {
    if (scene.name != "photograph" && scene.name != "room, three people") continue;
    if (!print_scene(scene)) return 1;
  }
  return 0;
}

}  // namespace
}  // namespace halcyra

int main() { return halcyra::print_scaling(); }
