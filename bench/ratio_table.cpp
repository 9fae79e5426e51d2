#include "bench/ratio_table.hpp"

#include <algorithm>
#include <iomanip>

#include <opencv2/core/utility.hpp>
#include <opencv2/core/version.hpp>

namespace halcyra {
namespace {

constexpr char kBetween[] = " | ";
constexpr char kFloor[] = " (floor)";

// What Google Benchmark appends to the names of what it times by the wall clock.
constexpr char kByWallClock[] = "/real_time";

std::string without_suffix(const std::string& name) {
  return name.substr(0, name.find(kByWallClock));
}

std::string milliseconds(double microseconds) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(microseconds < 1000 ? 3 : 1) << microseconds / 1000;
  return text.str();
}

std::string ratio(double work, double floor) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(2) << work / floor;
  return text.str();
}

}  // namespace

std::string row_name(const std::string& stage, const std::string& scene) {
  return stage + kBetween + scene;
}

std::string floor_name(const std::string& row) { return row + kFloor; }

bool RatioTable::ReportContext(const Context& context) {
  GetOutputStream() << "OpenCV " CV_VERSION ", " << cv::getNumThreads() << " threads on "
                    << context.cpu_info.num_cpus << " cores.\n\n";
  return true;
}

void RatioTable::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
    const std::string name = run.benchmark_name();
    const bool by_wall_clock = name.find(kByWallClock) != std::string::npos;
    const double time = by_wall_clock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    double& shortest = shortest_.emplace(without_suffix(name), time).first->second;
    shortest = std::min(shortest, time);
  }
}

void RatioTable::Finalize() {
  std::ostream& out = GetOutputStream();
  out << "| stage | scene | ms | floor, ms | ratio |\n|---|---|---:|---:|---:|\n";
  for (const std::string& row : rows_) {
    if (shortest_.count(row) == 0 || shortest_.count(floor_name(row)) == 0) continue;
    const double work = shortest_[row];
    const double floor = shortest_[floor_name(row)];
    out << "| " << row << kBetween << milliseconds(work) << kBetween << milliseconds(floor)
        << kBetween << ratio(work, floor) << " |\n";
  }
}

}  // namespace halcyra
