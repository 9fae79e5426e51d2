#include "bench/scaling_model.hpp"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace halcyra {
namespace {

bool same_tasks(const RecordedRun& a, const RecordedRun& b) {
  return std::equal(a.sections.begin(), a.sections.end(), b.sections.begin(), b.sections.end(),
                    [](const Section& one, const Section& other) {
                      return one.tasks.size() == other.tasks.size();
                    });
}

}  // namespace

bool keep_shortest(RecordedRun& shortest, const RecordedRun& run) {
  if (!same_tasks(shortest, run)) return false;
  for (std::size_t i = 0; i < run.sections.size(); ++i) {
    Section& kept = shortest.sections[i];
    const Section& section = run.sections[i];
    kept.serial_before = std::min(kept.serial_before, section.serial_before);
    for (std::size_t task = 0; task < section.tasks.size(); ++task) {
      kept.tasks[task] = std::min(kept.tasks[task], section.tasks[task]);
    }
  }
  shortest.serial_after = std::min(shortest.serial_after, run.serial_after);
  return true;
}

double sum_of_tasks(const Section& section) {
  return std::accumulate(section.tasks.begin(), section.tasks.end(), 0.0);
}

double longest_task(const Section& section) {
  return *std::max_element(section.tasks.begin(), section.tasks.end());
}

double section_on(const Section& section, int cores) {
  std::vector<double> busy_until(static_cast<std::size_t>(cores));
  for (const double task : section.tasks) {
    *std::min_element(busy_until.begin(), busy_until.end()) += task;
  }
  return *std::max_element(busy_until.begin(), busy_until.end());
}

ScaledRun run_on(const RecordedRun& run, int cores) {
  ScaledRun scaled;
  scaled.serial = run.serial_after;
  for (const Section& section : run.sections) {
    const double share = sum_of_tasks(section) / cores;
    const double bound = std::max(share, longest_task(section));
    scaled.serial += section.serial_before;
    scaled.shared += share;
    scaled.longest_task += bound - share;
    scaled.uneven_end += section_on(section, cores) - bound;
  }
  return scaled;
}

double least_time(const RecordedRun& run) {
  double time = run.serial_after;
  for (const Section& section : run.sections) time += section.serial_before + longest_task(section);
  return time;
}

}  // namespace halcyra
